local Adder = {}
Adder.__index = Adder

function Adder:add(a, b)
  return a + b
end

local adder = setmetatable({}, Adder)
local total = 0
for i = 1, tonumber(arg[1]) do
  total = adder:add(total, i)
end
print(total)
