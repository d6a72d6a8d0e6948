' Simple statements: whole numbers, comparisons, a branch.
Dim total As Integer = 0
Dim odd As Integer = 0
For i As Integer = 1 To CLong(Arguments(0))
  total = total + i * 3
  If i Mod 2 = 1 Then
    odd = odd + 1
  End If
Next
Print(Str(total) + " " + Str(odd))
