' A text of fields split at commas, ten times.
Dim text As String = "field,"
While text.Bytes < CLong(Arguments(0))
  text = text + text
Wend
Dim count As Integer = 0
For i As Integer = 1 To 10
  Dim fields() As String = Split(text, ",")
  count = count + fields.Count
Next
Print(Str(count))
