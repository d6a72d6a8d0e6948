' The same through a method of a class.
Class Adder
  Function Add(a As Integer, b As Integer) As Integer
    Return a + b
  End Function
End Class

Dim adder As New Adder
Dim total As Integer = 0
For i As Integer = 1 To CLong(Arguments(0))
  total = adder.Add(total, i)
Next
Print(Str(total))
