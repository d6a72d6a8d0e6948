local function add(a, b)
  return a + b
end

local total = 0
for i = 1, tonumber(arg[1]) do
  total = add(total, i)
end
print(total)
