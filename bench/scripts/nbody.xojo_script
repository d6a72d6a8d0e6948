' Real numbers in fields of objects: the five outer bodies of the solar system.
Class Body
  Dim x As Double
  Dim y As Double
  Dim z As Double
  Dim vx As Double
  Dim vy As Double
  Dim vz As Double
  Dim mass As Double

  Sub Constructor(x As Double, y As Double, z As Double, vx As Double, vy As Double, vz As Double, mass As Double)
    Const kDays = 365.24
    Const kSolarMass = 39.47841760435743
    Self.x = x
    Self.y = y
    Self.z = z
    Self.vx = vx * kDays
    Self.vy = vy * kDays
    Self.vz = vz * kDays
    Self.mass = mass * kSolarMass
  End Sub
End Class

Sub Advance(bodies() As Body, dt As Double)
  Dim last As Integer = bodies.LastIndex
  For i As Integer = 0 To last
    Dim a As Body = bodies(i)
    For j As Integer = i + 1 To last
      Dim b As Body = bodies(j)
      Dim dx As Double = a.x - b.x
      Dim dy As Double = a.y - b.y
      Dim dz As Double = a.z - b.z
      Dim square As Double = dx * dx + dy * dy + dz * dz
      Dim magnitude As Double = dt / (square * Sqrt(square))
      Dim am As Double = a.mass * magnitude
      Dim bm As Double = b.mass * magnitude
      a.vx = a.vx - dx * bm
      a.vy = a.vy - dy * bm
      a.vz = a.vz - dz * bm
      b.vx = b.vx + dx * am
      b.vy = b.vy + dy * am
      b.vz = b.vz + dz * am
    Next
  Next
  For i As Integer = 0 To last
    Dim a As Body = bodies(i)
    a.x = a.x + dt * a.vx
    a.y = a.y + dt * a.vy
    a.z = a.z + dt * a.vz
  Next
End Sub

Function Energy(bodies() As Body) As Double
  Dim sum As Double
  For i As Integer = 0 To bodies.LastIndex
    Dim a As Body = bodies(i)
    sum = sum + 0.5 * a.mass * (a.vx * a.vx + a.vy * a.vy + a.vz * a.vz)
    For j As Integer = i + 1 To bodies.LastIndex
      Dim b As Body = bodies(j)
      Dim dx As Double = a.x - b.x
      Dim dy As Double = a.y - b.y
      Dim dz As Double = a.z - b.z
      sum = sum - a.mass * b.mass / Sqrt(dx * dx + dy * dy + dz * dz)
    Next
  Next
  Return sum
End Function

Dim bodies() As Body
bodies.Append(New Body(0, 0, 0, 0, 0, 0, 1))
bodies.Append(New Body(4.84143144246472, -1.16032004402743, -0.103622044471123, 0.00166007664274404, _
  0.00769901118419740, -0.0000690460016972063, 0.000954791938424327))
bodies.Append(New Body(8.34336671824458, 4.12479856412430, -0.403523417114321, -0.00276742510726862, _
  0.00499852801234917, 0.0000230417297573764, 0.000285885980666131))
bodies.Append(New Body(12.8943695621391, -15.1111514016986, -0.223307578892656, 0.00296460137564762, _
  0.00237847173959481, -0.0000296589568540238, 0.0000436624404335156))
bodies.Append(New Body(15.3796971148509, -25.9193146099880, 0.179258772950371, 0.00268067772490389, _
  0.00162824170038242, -0.0000951592254519716, 0.0000515138902046611))
For i As Integer = 1 To CLong(Arguments(0))
  Advance(bodies, 0.01)
Next
Print(Format(Energy(bodies), "-0.000000000"))
