' A text of lines, put together from words and numbers in an array.
Dim lines() As String
For i As Integer = 1 To CLong(Arguments(0))
  lines.Append("line " + Str(i) + " of the text")
Next
Dim text As String = Join(lines, EndOfLine)
Print(Str(LenB(text)))
