' Statements of account, one file each, to be written by several processes at once; docs/performance.md shows how.
'
' Run it with: quillbar run statements.xojo_script FOLDER FIRST COUNT

If Arguments.LastIndex < 2 Then
  Raise New IOException("Usage: quillbar run statements.xojo_script FOLDER FIRST COUNT")
End If
Dim first As Integer = Val(Arguments(1))
Dim last As Integer = first + Val(Arguments(2)) - 1

For account As Integer = first To last
  WriteStatement(New FolderItem(Arguments(0) + "/statement-" + Format(account, "00000") + ".pdf"), account)
Next

Sub WriteStatement(target As FolderItem, account As Integer)
  Dim document As New PDFDocument(New CompressorHandle)
  document.Title = "Statement " + Str(account)
  Dim face As Font = document.GetFont("Helvetica", Font.FontEncodingEnum.WINDOWS_ANSI)
  Dim bold As Font = document.GetFont("Helvetica-Bold", Font.FontEncodingEnum.WINDOWS_ANSI)
  Dim p As Page = document.AddPage
  p.SetSize(Page.PageSizeEnum.A4, Page.PageDirectionEnum.PORTRAIT)
  WriteLine(p, bold, 16, 71, 760, "Statement of account " + Format(account, "00000"))
  Dim balance As Integer = account * 37 Mod 5000
  Dim y As Double = 720
  For entry As Integer = 1 To 30
    Dim amount As Integer = (account * 7919 + entry * 104729) Mod 90000 - 40000
    balance = balance + amount
    WriteLine(p, face, 10, 71, y, Format(entry, "00") + " March")
    WriteLine(p, face, 10, 151, y, "Invoice " + Format(account * 100 + entry, "0000000"))
    WriteLine(p, face, 10, 331, y, Format(amount / 100, "#,##0.00"))
    WriteLine(p, face, 10, 431, y, Format(balance / 100, "#,##0.00"))
    y = y - 18
  Next
  p.MoveTo(71, y + 10)
  p.LineTo(524, y + 10)
  p.Draw
  WriteLine(p, bold, 11, 431, y - 8, Format(balance / 100, "#,##0.00"))
  If target.Exists Then target.Delete ' Save never overwrites
  document.Save(target)
  If Not target.Exists Then Raise New IOException("The file could not be written: " + target.NativePath)
End Sub

Sub WriteLine(p As Page, face As Font, size As Double, x As Double, y As Double, text As String)
  p.BeginText
  p.SetFont(face, size)
  p.MoveTextPosition(x, y)
  p.ShowText(text)
  p.EndText
End Sub
