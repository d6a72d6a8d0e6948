local parts = {}
for i = 1, tonumber(arg[1]) do
  parts[#parts + 1] = "xyz"
end
local text = table.concat(parts)
print(#text)
