' A letter in sixteen languages, most of it with one automatic font.
'
' The font starts in Windows Latin 1. Other text switches it automatically to another single-byte encoding of the
' same face (Polish, Turkish, Greek, Hebrew); for the other scripts it raises ResolveFont, and the handler below picks a
' font from a folder. Arabic and Persian letters are joined only in a loaded font, so these two lines name theirs; the
' event doesn't tell Bengali from Tamil, so the handler looks at the letters.
' Run it with: quillbar run letter_in_sixteen_languages.xojo_script [FILE [FONT FOLDER]]

Const kMargin As Double = 64
Const kLineStep As Double = 37.5

' Text that begins with this mark runs from right to left.
Const kRightToLeft As String = &u200F

Dim fileName As String = "letter_in_sixteen_languages.pdf"
Dim fontFolder As String = "/usr/share/fonts"
If Arguments.LastIndex >= 0 Then fileName = Arguments(0)
If Arguments.LastIndex >= 1 Then fontFolder = Arguments(1)
Dim target As New FolderItem(fileName)
If target.Exists Then target.Delete ' Save never overwrites

Dim document As New PDFDocument(New CompressorHandle)
AddHandler document.ErrorLog, AddressOf ReportError
AddHandler document.ResolveFont, AddressOf PickFont
document.Title = "A letter in sixteen languages"

' A loaded font can be fetched again by its name, here with automatic encoding.
Dim cyrillic As Font = LoadFont("truetype/dejavu/DejaVuSans.ttf", "fonts-dejavu-core")
Dim automatic As Font = document.GetFont("Helvetica", Font.FontEncodingEnum.AUTOMATIC)
If cyrillic <> Nil Then automatic = document.GetFont(cyrillic.Name, Font.FontEncodingEnum.AUTOMATIC)
Dim label As Font = document.GetFont("Helvetica-Oblique", Font.FontEncodingEnum.WINDOWS_ANSI)
Dim heading As Font = document.GetFont("Helvetica-Bold", Font.FontEncodingEnum.WINDOWS_ANSI)
Dim arabic As Font = LoadFont("opentype/fonts-hosny-amiri/Amiri-Regular.ttf", "fonts-hosny-amiri")
If arabic Is Nil Then arabic = automatic

' Loaded when a text first needs them.
Dim bengali As Font = Nil
Dim tamil As Font = Nil
Dim thai As Font = Nil
Dim devanagari As Font = Nil
Dim korean As Font = Nil
Dim japanese As Font = Nil
Dim chinese As Font = Nil

Dim p As Page = document.AddPage
p.SetSize(Page.PageSizeEnum.A4, Page.PageDirectionEnum.PORTRAIT)
p.TransformCoordinates = True
Dim y As Double = 204

DrawLetterHead
WriteLine("English", automatic, "Dear friends, the new house is ready. Come and see us!")
WriteLine("German", automatic, "Liebe Freunde, das neue Haus ist fertig – schöne Grüße!")
WriteLine("Polish", automatic, "Drodzy przyjaciele, nowy dom już stoi. Zapraszamy!")
WriteLine("Turkish", automatic, "Sevgili dostlar, yeni ev hazır. Bize gelin, çay içelim!")
WriteLine("Greek", automatic, "Αγαπητοί φίλοι, το νέο σπίτι είναι έτοιμο.")
WriteLine("Russian", automatic, "Дорогие друзья, новый дом готов. Приезжайте в гости!")
WriteLine("Hebrew", automatic, kRightToLeft + "חברים יקרים, הבית החדש מוכן. בואו לבקר!")
WriteLine("Arabic", arabic, kRightToLeft + "أصدقاءنا الأعزاء، البيت الجديد جاهز. تعالوا لزيارتنا!")
WriteLine("Persian", arabic, kRightToLeft + "دوستان عزیز، خانهٔ نو در خیابان ۱۲، پلاک ۳۴ (طبقهٔ ۵) آماده است.")
WriteLine("Hindi", automatic, "प्रिय मित्रो, नया घर तैयार है। हमारे यहाँ ज़रूर आइए!")
WriteLine("Bengali", automatic, "প্রিয় বন্ধুরা, নতুন বাড়ি প্রস্তুত। বেড়াতে আসুন!")
WriteLine("Tamil", automatic, "அன்பு நண்பர்களே, புதிய வீடு தயார். வந்து பாருங்கள்!")
WriteLine("Thai", automatic, "เพื่อนที่รัก บ้านใหม่เสร็จแล้ว มาเยี่ยมเรานะ")
WriteLine("Korean", automatic, "친애하는 친구들, 새 집이 완성되었습니다. 놀러 오세요!")
WriteLine("Japanese", automatic, "友人の皆さん、新しい家ができました。ぜひ遊びに来てください。")
WriteLine("Chinese", automatic, "亲爱的朋友们，新房子已经建好了，欢迎来做客！")

document.Save(target)
If target.Exists Then
  Print "Wrote " + target.NativePath + ": " + Format(target.Length / 1024, "0.0") + " KB"
Else
  StdErr.WriteLine("The file could not be written: " + target.NativePath)
  Quit(1)
End If

' ---------------------------------------------------------------- fonts

' Answers ResolveFont. Nil leaves the text to the automatic font's own last resort.
Function PickFont(sender As PDFDocument, text As String, script As PDFDocument.LanguageScript, currentFont As Font) As Font
  Select Case script
  Case PDFDocument.LanguageScript.LANGUAGE_SCRIPT_CYRILLIC
    Return cyrillic
  Case PDFDocument.LanguageScript.LANGUAGE_SCRIPT_THAI
    If thai Is Nil Then thai = LoadFont("truetype/tlwg/Garuda.ttf", "fonts-tlwg-garuda-ttf")
    Return thai
  Case PDFDocument.LanguageScript.LANGUAGE_SCRIPT_DEVANAGARI
    If devanagari Is Nil Then devanagari = LoadFont("truetype/lohit-devanagari/Lohit-Devanagari.ttf", "fonts-lohit-deva")
    Return devanagari
  Case PDFDocument.LanguageScript.LANGUAGE_SCRIPT_KOREAN
    If korean Is Nil Then korean = LoadFont("truetype/nanum/NanumGothic.ttf", "fonts-nanum")
    Return korean
  Case PDFDocument.LanguageScript.LANGUAGE_SCRIPT_JAPANESE, PDFDocument.LanguageScript.LANGUAGE_SCRIPT_CJK_UNIFIEDIDEOGRAPHS
    ' Text of ideographs alone counts as Japanese; without kana it is taken for Chinese here.
    If HasLetters(text, &h3040, &h30FF) Then
      If japanese Is Nil Then japanese = LoadFont("opentype/ipafont-mincho/ipam.ttf", "fonts-ipafont-mincho")
      Return japanese
    End If
    If chinese Is Nil Then chinese = LoadFont("truetype/arphic-gbsn00lp/gbsn00lp.ttf", "fonts-arphic-gbsn00lp")
    Return chinese
  Else
    If HasLetters(text, &h0980, &h09FF) Then
      If bengali Is Nil Then bengali = LoadFont("truetype/noto/NotoSansBengali-Regular.ttf", "fonts-noto-core")
      Return bengali
    ElseIf HasLetters(text, &h0B80, &h0BFF) Then
      If tamil Is Nil Then tamil = LoadFont("truetype/noto/NotoSansTamil-Regular.ttf", "fonts-noto-core")
      Return tamil
    End If
    Return Nil
  End Select
End Function

' Says which package has a font that is missing.
Function LoadFont(path As String, package As String) As Font
  Dim file As New FolderItem(fontFolder + "/" + path)
  If Not file.Exists Then
    Print file.NativePath + " is missing. Debian has it in the package " + package + "."
    Return Nil
  End If
  Dim loaded As Font = document.LoadTrueTypeFont(file)
  If loaded Is Nil Then Print "No font that can be loaded: " + file.NativePath
  Return loaded
End Function

Function HasLetters(text As String, first As Integer, last As Integer) As Boolean
  For i As Integer = 1 To Len(text)
    Dim code As Integer = Asc(Mid(text, i, 1))
    If code >= first And code <= last Then Return True
  Next
  Return False
End Function

' ---------------------------------------------------------------- the page

Sub DrawLetterHead()
  p.FillColor = &c1F4E5F
  p.Rectangle(0, 0, p.Width, 12)
  p.Fill
  WriteText(heading, 26, &c1F4E5F, kMargin, 84, "Moved!")
  WriteText(label, 11, &c6B7785, kMargin, 106, "One letter in sixteen languages")
  p.StrokeColor = &cC9D6DF
  p.LineWidth = 0.8
  p.MoveTo(kMargin, 130)
  p.LineTo(p.Width - kMargin, 130)
  p.Draw
  WriteText(automatic, 12, &c22313F, kMargin, 162, "Zürich, 1 May")
End Sub

' A right-to-left line and its label end at the right margin.
Sub WriteLine(language As String, face As Font, text As String)
  Dim labelX As Double = kMargin
  Dim x As Double = kMargin
  If Left(text, 1) = kRightToLeft Then
    labelX = p.Width - kMargin - WidthOf(label, 8, language)
    x = p.Width - kMargin - WidthOf(face, 13.5, text)
  End If
  WriteText(label, 8, &c8796A5, labelX, y - 18, language)
  WriteText(face, 13.5, &c22313F, x, y, text)
  y = y + kLineStep
End Sub

Function WidthOf(face As Font, size As Double, text As String) As Double
  Dim width As Single = 0
  p.BeginText
  p.SetFont(face, size)
  Dim count As Integer = p.MeasureText(text, p.Width, False, width)
  p.EndText
  Return width
End Function

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
