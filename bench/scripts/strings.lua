local lines = {}
for i = 1, tonumber(arg[1]) do
  lines[#lines + 1] = "line " .. i .. " of the text"
end
local text = table.concat(lines, "\n")
print(#text)
