' Two pages of East Asian text: a Japanese and a Chinese essay, in two columns with justified lines.
'
' Neither language has blanks between words. A text box breaks lines between characters, keeps closing brackets, full
' stops and small kana off their start and opening brackets off their end, and leaves Latin words and numbers whole. Run
' it with: quillbar run japanese_and_chinese_essays.xojo_script [FILE]

Const kMargin As Double = 56
Const kGap As Double = 26
Const kTop As Double = 190
Const kBottom As Double = 770

Dim fileName As String = "japanese_and_chinese_essays.pdf"
If Arguments.LastIndex >= 0 Then fileName = Arguments(0)
Dim target As New FolderItem(fileName)
If target.Exists Then target.Delete ' Save never overwrites

Dim document As New PDFDocument(New CompressorHandle)
AddHandler document.ErrorLog, AddressOf ReportError
document.Title = "吾輩は猫である · 桃花源记"
Dim p As Page = Nil
Dim face As Font = Nil
Dim ink As Color = &c222222

face = FaceFrom("/usr/share/fonts/opentype/ipafont-mincho/ipam.ttf", "fonts-ipafont-mincho", "MS-Mincho")
SetEssay("吾輩は猫である", "夏目漱石（1905年）", Japanese, &cB3261E, 15, 25)
face = FaceFrom("/usr/share/fonts/truetype/arphic-gbsn00lp/gbsn00lp.ttf", "fonts-arphic-gbsn00lp", "SimSun")
SetEssay("桃花源记", "陶渊明（约公元421年）", Chinese, &c1F5F8B, 17, 29)

document.Save(target)
If target.Exists Then
  Print "Wrote " + target.NativePath + ": " + Format(target.Length / 1024, "0.0") + " KB"
Else
  StdErr.WriteLine("The file could not be written: " + target.NativePath)
  Quit(1)
End If

' A font from a file, embedded. Without the file, a face that viewers bring, or fetch.
Function FaceFrom(path As String, package As String, builtIn As String) As Font
  Dim file As New FolderItem(path)
  If file.Exists Then Return document.LoadTrueTypeFont(file)
  Print "Not embedded: " + builtIn + ". The Debian package " + package + " has a font to embed."
  Return document.GetFont(builtIn, Font.FontEncodingEnum.WINDOWS_ANSI)
End Function

Sub SetEssay(title As String, author As String, text As String, accent As Color, size As Double, leading As Double)
  p = document.AddPage
  p.SetSize(Page.PageSizeEnum.A4, Page.PageDirectionEnum.PORTRAIT)
  p.TransformCoordinates = True
  p.FillColor = accent
  p.Rectangle(kMargin, 62, 34, 5)
  p.Fill
  Call SetBox(title, 32, 40, accent, kMargin, 84, p.Width - kMargin, 126, Page.TextAlignmentEnum.LEFT)
  Call SetBox(author, 12, 16, &c666666, kMargin, 138, p.Width - kMargin, 156, Page.TextAlignmentEnum.LEFT)
  p.StrokeColor = &cCCCCCC
  p.LineWidth = 0.6
  p.MoveTo(kMargin, 170)
  p.LineTo(p.Width - kMargin, 170)
  p.Draw

  Dim width As Double = (p.Width - 2 * kMargin - kGap) / 2
  Dim lines As Integer = 0
  p.BeginText
  p.SetFont(face, size)
  p.TextLeading = leading
  Dim height As Double = p.TextRectMeasure(text, width, lines)
  p.EndText
  ' Both columns are as high as half of the lines, if the page has room for that.
  Dim columnHeight As Double = Min((lines + 1) \ 2 * leading, kBottom - kTop)
  Dim rest As String = text
  For column As Integer = 0 To 1
    Dim left As Double = kMargin + column * (width + kGap)
    rest = SetBox(rest, size, leading, ink, left, kTop, left + width, kTop + columnHeight, Page.TextAlignmentEnum.JUSTIFY)
  Next
  If rest <> "" Then Print title + ": " + Str(Len(rest)) + " characters found no room"
End Sub

' Sets a text in a box and returns the rest that didn't fit.
Function SetBox(text As String, size As Double, leading As Double, colour As Color, left As Double, top As Double, right As Double, bottom As Double, alignment As Page.TextAlignmentEnum) As String
  Dim used As Integer = 0
  p.FillColor = colour
  p.BeginText
  p.SetFont(face, size)
  p.TextLeading = leading
  p.TextRect(text, left, top, right, bottom, alignment, used)
  p.EndText
  Return Mid(text, used + 1)
End Function

Function Japanese() As String
  Return "　吾輩は猫である。名前はまだ無い。" + EndOfLine + _
    "　どこで生れたかとんと見当がつかぬ。何でも薄暗いじめじめした所でニャーニャー泣いていた事だけは記憶している。吾輩はここで始めて人間というものを見た。しかもあとで聞くとそれは書生という人間中で一番獰悪な種族であったそうだ。この書生というのは時々我々を捕えて煮て食うという話である。しかしその当時は何という考もなかったから別段恐しいとも思わなかった。ただ彼の掌に載せられてスーと持ち上げられた時何だかフワフワした感じがあったばかりである。" + EndOfLine + _
    "　掌の上で少し落ちついて書生の顔を見たのがいわゆる人間というものの見始であろう。この時妙なものだと思った感じが今でも残っている。第一毛をもって装飾されべきはずの顔がつるつるしてまるで薬缶だ。のみならず顔の真中があまりに突起している。そうしてその穴の中から時々ぷうぷうと煙を吹く。どうも咽せぽくて実に弱った。これが人間の飲む煙草というものである事はようやくこの頃知った。" + EndOfLine + _
    "　（この頁はQuillbar PDF Writerで組んだ。「行頭に句読点や小さい『っ』『ゃ』『ー』『々』を置かない」という規則は、Unicode Standard Annex 14による。）"
End Function

Function Chinese() As String
  Return "　　晋太元中，武陵人捕鱼为业。缘溪行，忘路之远近。忽逢桃花林，夹岸数百步，中无杂树，芳草鲜美，落英缤纷。渔人甚异之，复前行，欲穷其林。" + EndOfLine + _
    "　　林尽水源，便得一山，山有小口，仿佛若有光。便舍船，从口入。初极狭，才通人。复行数十步，豁然开朗。土地平旷，屋舍俨然，有良田、美池、桑竹之属。阡陌交通，鸡犬相闻。其中往来种作，男女衣着，悉如外人。黄发垂髫，并怡然自乐。" + EndOfLine + _
    "　　见渔人，乃大惊，问所从来。具答之。便要还家，设酒杀鸡作食。村中闻有此人，咸来问讯。自云先世避秦时乱，率妻子邑人来此绝境，不复出焉，遂与外人间隔。问今是何世，乃不知有汉，无论魏晋。此人一一为具言所闻，皆叹惋。余人各复延至其家，皆出酒食。停数日，辞去。此中人语云：“不足为外人道也。”" + EndOfLine + _
    "　　（本页由Quillbar PDF Writer排版：《桃花源记》的标点“，。、！”不会出现在行首。）"
End Function

Sub ReportError(sender As PDFDocument, errorNumber As UInt32, detail As UInt32)
  Print "The PDF library reports error " + Str(errorNumber) + " (" + Str(detail) + ")"
End Sub
