' A letter in twelve languages with one automatic font.
'
' The font starts in Windows Latin 1. Other text switches it automatically to another single-byte encoding of the
' same face (Polish, Turkish, Greek, Hebrew); for the other scripts it raises ResolveFont, and the handler below picks a
' font from a folder. Run it with: quillbar run letter_in_twelve_languages.xojo_script [FILE [FONT FOLDER]]

Const kMargin As Double = 64
Const kLineStep As Double = 49

Dim fileName As String = "letter_in_twelve_languages.pdf"
Dim fontFolder As String = "/usr/share/fonts"
If Arguments.LastIndex >= 0 Then fileName = Arguments(0)
If Arguments.LastIndex >= 1 Then fontFolder = Arguments(1)
Dim target As New FolderItem(fileName)
If target.Exists Then target.Delete ' Save never overwrites

Dim document As New PDFDocument(New CompressorHandle)
AddHandler document.ErrorLog, AddressOf ReportError
AddHandler document.ResolveFont, AddressOf PickFont
document.Title = "A letter in twelve languages"

' A loaded font can be fetched again by its name, here with automatic encoding.
Dim cyrillic As Font = LoadFont("truetype/dejavu/DejaVuSans.ttf")
Dim automatic As Font = document.GetFont(cyrillic.Name, Font.FontEncodingEnum.AUTOMATIC)
Dim label As Font = document.GetFont("Helvetica-Oblique", Font.FontEncodingEnum.WINDOWS_ANSI)
Dim heading As Font = document.GetFont("Helvetica-Bold", Font.FontEncodingEnum.WINDOWS_ANSI)

' Loaded when a text first needs them.
Dim thai As Font = Nil
Dim devanagari As Font = Nil
Dim korean As Font = Nil
Dim japanese As Font = Nil
Dim chinese As Font = Nil

Dim p As Page = document.AddPage
p.SetSize(Page.PageSizeEnum.A4, Page.PageDirectionEnum.PORTRAIT)
p.TransformCoordinates = True
Dim y As Double = 200

DrawLetterHead
WriteLine("English", "Dear friends, the new house is ready. Come and see us!")
WriteLine("German", "Liebe Freunde, das neue Haus ist fertig – schöne Grüße!")
WriteLine("Polish", "Drodzy przyjaciele, nowy dom już stoi. Zapraszamy!")
WriteLine("Turkish", "Sevgili dostlar, yeni ev hazır. Bize gelin, çay içelim!")
WriteLine("Greek", "Αγαπητοί φίλοι, το νέο σπίτι είναι έτοιμο.")
WriteLine("Russian", "Дорогие друзья, новый дом готов. Приезжайте в гости!")
WriteLine("Hebrew", Reversed("חברים יקרים, הבית החדש מוכן. בואו לבקר!"))
WriteLine("Thai", "เพื่อนที่รัก บ้านใหม่เสร็จแล้ว มาเยี่ยมเรานะ")
WriteLine("Hindi", "नया घर तैयार है, हमारे यहाँ आना!")
WriteLine("Korean", "친애하는 친구들, 새 집이 완성되었습니다. 놀러 오세요!")
WriteLine("Japanese", "友人の皆さん、新しい家ができました。ぜひ遊びに来てください。")
WriteLine("Chinese", "亲爱的朋友们，新房子已经建好了，欢迎来做客！")

document.Save(target)
If target.Exists Then
  Print "Wrote " + target.NativePath + ": " + Format(target.Length / 1024, "0.0") + " KB"
Else
  Print "The file could not be written: " + target.NativePath
End If

' ---------------------------------------------------------------- fonts

' Answers ResolveFont. Text of ideographs alone counts as Japanese; without kana it is taken for Chinese here.
Function PickFont(sender As PDFDocument, text As String, script As PDFDocument.LanguageScript, currentFont As Font) As Font
  Select Case script
  Case PDFDocument.LanguageScript.LANGUAGE_SCRIPT_CYRILLIC
    Return cyrillic
  Case PDFDocument.LanguageScript.LANGUAGE_SCRIPT_THAI
    If thai Is Nil Then thai = LoadFont("truetype/tlwg/Garuda.ttf")
    Return thai
  Case PDFDocument.LanguageScript.LANGUAGE_SCRIPT_DEVANAGARI
    If devanagari Is Nil Then devanagari = LoadFont("truetype/lohit-devanagari/Lohit-Devanagari.ttf")
    Return devanagari
  Case PDFDocument.LanguageScript.LANGUAGE_SCRIPT_KOREAN
    If korean Is Nil Then korean = LoadFont("truetype/nanum/NanumGothic.ttf")
    Return korean
  Case PDFDocument.LanguageScript.LANGUAGE_SCRIPT_JAPANESE, PDFDocument.LanguageScript.LANGUAGE_SCRIPT_CJK_UNIFIEDIDEOGRAPHS
    If HasKana(text) Then
      If japanese Is Nil Then japanese = LoadFont("opentype/ipafont-mincho/ipam.ttf")
      Return japanese
    End If
    If chinese Is Nil Then chinese = LoadFont("truetype/arphic-gbsn00lp/gbsn00lp.ttf")
    Return chinese
  Else
    Return Nil
  End Select
End Function

Function LoadFont(path As String) As Font
  Dim file As New FolderItem(fontFolder + "/" + path)
  Dim loaded As Font = document.LoadTrueTypeFont(file)
  If loaded Is Nil Then Print "No TrueType font: " + file.NativePath
  Return loaded
End Function

Function HasKana(text As String) As Boolean
  For i As Integer = 1 To Len(text)
    Dim code As Integer = Asc(Mid(text, i, 1))
    If code >= &h3040 And code <= &h30FF Then Return True
  Next
  Return False
End Function

' Characters are placed from left to right, so a right-to-left text is passed reversed.
Function Reversed(text As String) As String
  Dim result As String = ""
  For i As Integer = Len(text) DownTo 1
    result = result + Mid(text, i, 1)
  Next
  Return result
End Function

' ---------------------------------------------------------------- the page

Sub DrawLetterHead()
  p.FillColor = &c1F4E5F
  p.Rectangle(0, 0, p.Width, 12)
  p.Fill
  WriteText(heading, 26, &c1F4E5F, kMargin, 84, "Moved!")
  WriteText(label, 11, &c6B7785, kMargin, 106, "One letter, twelve languages, one automatic font")
  p.StrokeColor = &cC9D6DF
  p.LineWidth = 0.8
  p.MoveTo(kMargin, 130)
  p.LineTo(p.Width - kMargin, 130)
  p.Draw
  WriteText(automatic, 12, &c22313F, kMargin, 162, "Zürich, 1 May")
End Sub

Sub WriteLine(language As String, text As String)
  WriteText(label, 8.5, &c8796A5, kMargin, y - 19, language)
  WriteText(automatic, 14, &c22313F, kMargin, y, text)
  y = y + kLineStep
End Sub

Sub WriteText(face As Font, size As Double, colour As Color, x As Double, baseline As Double, text As String)
  p.FillColor = colour
  p.BeginText
  p.SetFont(face, size)
  p.MoveTextPosition(x, baseline)
  p.ShowText(text)
  p.EndText
End Sub

Sub ReportError(sender As PDFDocument, errorNumber As UInt32, detail As UInt32)
  Print "The PDF library reports error " + Str(errorNumber) + " (" + Str(detail) + ")"
End Sub
