local text = "field,"
while #text < tonumber(arg[1]) do
  text = text .. text
end
local count = 0
for i = 1, 10 do
  local fields = {}
  for field in string.gmatch(text .. ",", "([^,]*),") do
    fields[#fields + 1] = field
  end
  count = count + #fields
end
print(count)
