local words = {}
for i = 1, tonumber(arg[1]) do
  words[#words + 1] = "word" .. i
end
local lengths = {}
for _, word in ipairs(words) do
  lengths[word] = #word
end
local sum = 0
for pass = 1, 10 do
  for _, word in ipairs(words) do
    sum = sum + lengths[word]
  end
end
print(sum)
