' Calls: the Fibonacci number of an index, by its definition.
Function Fib(n As Integer) As Integer
  If n < 2 Then Return n
  Return Fib(n - 1) + Fib(n - 2)
End Function

Print(Str(Fib(CLong(Arguments(0)))))
