' A dictionary of words: each is set once and looked up ten times.
Dim words() As String
For i As Integer = 1 To CLong(Arguments(0))
  words.Append("word" + Str(i))
Next
Dim lengths As New Dictionary
For Each word As String In words
  lengths.Value(word) = Len(word)
Next
Dim sum As Integer
For pass As Integer = 1 To 10
  For Each word As String In words
    sum = sum + lengths.Value(word)
  Next
Next
Print(Str(sum))
