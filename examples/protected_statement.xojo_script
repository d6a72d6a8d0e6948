' An account statement that only its owner may change: encrypted with an owner password and a key of 128 bits.
'
' Everybody can open and read the file; viewers grant the owner's rights to those who know the password.
' Run it with: quillbar run protected_statement.xojo_script [FILE [PASSWORD]]

Const kMargin As Double = 64

Dim fileName As String = "protected_statement.pdf"
Dim password As String = "harbour lights"
If Arguments.LastIndex >= 0 Then fileName = Arguments(0)
If Arguments.LastIndex >= 1 Then password = Arguments(1)
Dim target As New FolderItem(fileName)
If target.Exists Then target.Delete ' Save never overwrites

Dim document As New PDFDocument(New CompressorHandle)
document.Title = "Statement of account"
document.Author = "Harbour Bank"
Dim regular As Font = document.GetFont("Helvetica", Font.FontEncodingEnum.WINDOWS_ANSI)
Dim bold As Font = document.GetFont("Helvetica-Bold", Font.FontEncodingEnum.WINDOWS_ANSI)
Dim figures As Font = document.GetFont("Courier", Font.FontEncodingEnum.WINDOWS_ANSI)

Dim dates() As String = Array("02.03.", "05.03.", "09.03.", "14.03.", "20.03.", "27.03.", "31.03.")
Dim texts() As String = Array("Salary", "Rent", "Groceries", "Railway ticket", "Dentist", "Books", "Interest")
Dim cents() As Integer = Array(312450, -98000, -8642, -4590, -12500, -3795, 212)

Dim p As Page = document.AddPage
p.SetSize(Page.PageSizeEnum.A4, Page.PageDirectionEnum.PORTRAIT)
p.TransformCoordinates = True
p.FillColor = &c123B2A
p.Rectangle(0, 0, p.Width, 130)
p.Fill
WriteText(bold, 26, &cFFFFFF, kMargin, 72, "Harbour Bank")
WriteText(regular, 12, &cBFD8CB, kMargin, 96, "Statement of account, March")

Dim balance As Integer = 145320
Dim y As Double = 190
WriteLine(y, "", "Balance brought forward", balance, True)
For i As Integer = 0 To texts.LastIndex
  y = y + 30
  If i Mod 2 = 0 Then
    p.FillColor = &cF1F6F3
    p.Rectangle(kMargin - 10, y - 19, p.Width - 2 * kMargin + 20, 30)
    p.Fill
  End If
  balance = balance + cents(i)
  WriteLine(y, dates(i), texts(i), cents(i), False)
Next
y = y + 44
p.StrokeColor = &c123B2A
p.LineWidth = 1
p.MoveTo(kMargin - 10, y - 24)
p.LineTo(p.Width - kMargin + 10, y - 24)
p.Draw
WriteLine(y, "31.03.", "New balance", balance, True)

' The password first: it is what makes the encryption settings possible.
document.SetPassword(password, "")
If document.LastErrorNumber <> 0 Then
  Print "The password was refused: error " + Str(document.LastErrorNumber)
  Return
End If
document.SetEncryptionMode(PDFDocument.EncryptModeEnum.ENCRYPT_R3, 16)
If document.LastErrorNumber <> 0 Then
  Print "The encryption was refused: error " + Str(document.LastErrorNumber)
  Return
End If

document.Save(target)
If target.Exists Then
  Print "Wrote " + target.NativePath + ", protected"
Else
  StdErr.WriteLine("The file could not be written: " + target.NativePath)
  Quit(1)
End If

Sub WriteLine(lineY As Double, when As String, text As String, amount As Integer, strong As Boolean)
  Dim face As Font = regular
  If strong Then face = bold
  WriteText(regular, 11, &c5B6B63, kMargin, lineY, when)
  WriteText(face, 11, &c22302A, kMargin + 60, lineY, text)
  Dim number As String = Format(amount / 100, "0.00")
  Dim colour As Color = &c22302A
  If amount < 0 Then colour = &cB03A2E
  WriteText(figures, 12, colour, p.Width - kMargin - Len(number) * 7.2, lineY, number) ' Courier: 600 of 1000
End Sub

Sub WriteText(face As Font, size As Double, colour As Color, x As Double, textY As Double, text As String)
  p.BeginText
  p.SetFont(face, size)
  p.FillColor = colour
  p.MoveTextPosition(x, textY)
  p.ShowText(text)
  p.EndText
End Sub
