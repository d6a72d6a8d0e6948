local function body(x, y, z, vx, vy, vz, mass)
  local days, solarMass = 365.24, 39.47841760435743
  return {x = x, y = y, z = z, vx = vx * days, vy = vy * days, vz = vz * days, mass = mass * solarMass}
end

local function advance(bodies, dt)
  local last = #bodies
  for i = 1, last do
    local a = bodies[i]
    for j = i + 1, last do
      local b = bodies[j]
      local dx = a.x - b.x
      local dy = a.y - b.y
      local dz = a.z - b.z
      local square = dx * dx + dy * dy + dz * dz
      local magnitude = dt / (square * math.sqrt(square))
      local am = a.mass * magnitude
      local bm = b.mass * magnitude
      a.vx = a.vx - dx * bm
      a.vy = a.vy - dy * bm
      a.vz = a.vz - dz * bm
      b.vx = b.vx + dx * am
      b.vy = b.vy + dy * am
      b.vz = b.vz + dz * am
    end
  end
  for i = 1, last do
    local a = bodies[i]
    a.x = a.x + dt * a.vx
    a.y = a.y + dt * a.vy
    a.z = a.z + dt * a.vz
  end
end

local function energy(bodies)
  local sum = 0
  for i = 1, #bodies do
    local a = bodies[i]
    sum = sum + 0.5 * a.mass * (a.vx * a.vx + a.vy * a.vy + a.vz * a.vz)
    for j = i + 1, #bodies do
      local b = bodies[j]
      local dx = a.x - b.x
      local dy = a.y - b.y
      local dz = a.z - b.z
      sum = sum - a.mass * b.mass / math.sqrt(dx * dx + dy * dy + dz * dz)
    end
  end
  return sum
end

local bodies = {
  body(0, 0, 0, 0, 0, 0, 1),
  body(4.84143144246472, -1.16032004402743, -0.103622044471123, 0.00166007664274404,
    0.00769901118419740, -0.0000690460016972063, 0.000954791938424327),
  body(8.34336671824458, 4.12479856412430, -0.403523417114321, -0.00276742510726862,
    0.00499852801234917, 0.0000230417297573764, 0.000285885980666131),
  body(12.8943695621391, -15.1111514016986, -0.223307578892656, 0.00296460137564762,
    0.00237847173959481, -0.0000296589568540238, 0.0000436624404335156),
  body(15.3796971148509, -25.9193146099880, 0.179258772950371, 0.00268067772490389,
    0.00162824170038242, -0.0000951592254519716, 0.0000515138902046611),
}
for i = 1, tonumber(arg[1]) do
  advance(bodies, 0.01)
end
print(string.format("%.9f", energy(bodies)))
