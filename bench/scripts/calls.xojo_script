' A Function of two parameters, called in a loop.
Function Add(a As Integer, b As Integer) As Integer
  Return a + b
End Function

Dim total As Integer = 0
For i As Integer = 1 To CLong(Arguments(0))
  total = Add(total, i)
Next
Print(Str(total))
