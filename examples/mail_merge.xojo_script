' A mail merge: one letter for each row of a CSV file, with names in Latin letters of any kind.
'
' The font is automatic, so that a name beyond Windows Latin 1 switches the encoding for that text and is written as it is
' spelt. Run it with: quillbar run mail_merge.xojo_script [CSV FILE [FILE]]

Const kLeft As Double = 71
Const kRight As Double = 524

Dim fileName As String = "mail_merge.pdf"
Dim dataName As String = "examples/data/members.csv"
If Arguments.LastIndex >= 0 Then dataName = Arguments(0)
If Arguments.LastIndex >= 1 Then fileName = Arguments(1)
Dim data As New FolderItem(dataName)
If Not data.Exists Then
  StdErr.WriteLine("No such file: " + data.NativePath + _
    ". Run this script in the folder that holds examples, or name a CSV file: quillbar run mail_merge.xojo_script FILE")
  Quit(1)
End If
Dim target As New FolderItem(fileName)
If target.Exists Then target.Delete ' Save never overwrites

Dim document As New PDFDocument(New CompressorHandle)
AddHandler document.ErrorLog, AddressOf ReportError
document.Title = "Contributions"
Dim face As Font = document.GetFont("Times-Roman", Font.FontEncodingEnum.AUTOMATIC)
Dim bold As Font = document.GetFont("Times-Bold", Font.FontEncodingEnum.AUTOMATIC)

Dim letters As Integer = 0
Dim input As TextInputStream = TextInputStream.Open(data)
Dim heading As String = input.ReadLine
While Not input.EndOfFile
  Dim row As String = input.ReadLine
  If row <> "" Then WriteLetter(Split(row, ";"))
Wend
input.Close

document.Save(target)
If target.Exists Then
  Print "Wrote " + target.NativePath + ": " + Str(letters) + " letters, " + Format(target.Length / 1024, "0.0") + " KB"
Else
  StdErr.WriteLine("The file could not be written: " + target.NativePath)
  Quit(1)
End If

Sub WriteLetter(fields() As String)
  letters = letters + 1
  Dim p As Page = document.AddPage
  p.SetSize(Page.PageSizeEnum.A4, Page.PageDirectionEnum.PORTRAIT)
  p.TransformCoordinates = True

  p.FillColor = &c2F5D50
  WriteLine(p, bold, 17, kLeft, 80, "Förderverein Alte Mühle e. V.")
  p.FillColor = &c777777
  WriteLine(p, face, 8, kLeft, 122, "Förderverein Alte Mühle · Mühlgäßchen 1 · 97070 Würzburg")
  p.FillColor = &c000000
  WriteLine(p, face, 11, kLeft, 146, fields(1))
  WriteLine(p, face, 11, kLeft, 160, fields(2))
  WriteLine(p, face, 11, kLeft, 174, fields(3))

  SetBox(p, face, "Würzburg, im März", kLeft, 250, kRight, 270, Page.TextAlignmentEnum.RIGHT)
  WriteLine(p, bold, 11, kLeft, 300, "Ihr Beitrag für dieses Jahr")
  WriteLine(p, face, 11, kLeft, 330, fields(0) + " " + fields(1) + ",")
  Dim text As String = "seit " + fields(4) + " gehören Sie zu den Freunden der Alten Mühle. Dafür danken wir Ihnen herzlich! " + _
    "Im vergangenen Jahr haben wir das Wasserrad überholt und die Bäckerei wieder eröffnet; die nächsten größeren Arbeiten " + _
    "gelten dem Dachstuhl." + Chr(10) + Chr(10) + "Bitte überweisen Sie Ihren Beitrag von " + fields(5) + " € bis zum Ende des Monats. " + _
    "Eine Bestätigung für das Finanzamt erhalten Sie unaufgefordert."
  SetBox(p, face, text, kLeft, 350, kRight, 520, Page.TextAlignmentEnum.JUSTIFY)
  WriteLine(p, face, 11, kLeft, 540, "Mit herzlichen Grüßen")
  WriteLine(p, face, 11, kLeft, 590, "Käthe Würtz, Schatzmeisterin")
End Sub

Sub WriteLine(p As Page, font As Font, size As Double, x As Double, baseline As Double, text As String)
  p.BeginText
  p.SetFont(font, size)
  p.MoveTextPosition(x, baseline)
  p.ShowText(text)
  p.EndText
End Sub

Sub SetBox(p As Page, font As Font, text As String, left As Double, top As Double, right As Double, bottom As Double, alignment As Page.TextAlignmentEnum)
  Dim used As Integer = 0
  p.BeginText
  p.SetFont(font, 11)
  p.TextLeading = 15
  p.TextRect(text, left, top, right, bottom, alignment, used)
  p.EndText
  If used < Len(text) Then Print "A text did not fit: " + Mid(text, used + 1)
End Sub

Sub ReportError(sender As PDFDocument, errorNumber As UInt32, detail As UInt32)
  Print "The PDF library reports error " + Str(errorNumber) + " (" + Str(detail) + ")"
End Sub
