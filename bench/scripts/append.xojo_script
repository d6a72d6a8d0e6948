' Appends to one text. Lua's texts don't grow in place; its own way collects the parts in a table.
Dim text As String
For i As Integer = 1 To CLong(Arguments(0))
  text = text + "xyz"
Next
Print(Str(LenB(text)))
