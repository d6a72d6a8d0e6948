local last = tonumber(arg[1])
local isComposite = {}
for i = 0, last do isComposite[i] = false end
local count = 0
for i = 2, last do
  if not isComposite[i] then
    count = count + 1
    for multiple = i + i, last, i do
      isComposite[multiple] = true
    end
  end
end
print(count)
