local total = 0
local odd = 0
for i = 1, tonumber(arg[1]) do
  total = total + i * 3
  if i % 2 == 1 then
    odd = odd + 1
  end
end
print(total .. " " .. odd)
