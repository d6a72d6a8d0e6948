' Elements of an array: how many primes there are up to a number.
Dim last As Integer = CLong(Arguments(0))
Dim isComposite() As Boolean
Redim isComposite(last)
Dim count As Integer = 0
For i As Integer = 2 To last
  If Not isComposite(i) Then
    count = count + 1
    For multiple As Integer = i + i To last Step i
      isComposite(multiple) = True
    Next
  End If
Next
Print(Str(count))
