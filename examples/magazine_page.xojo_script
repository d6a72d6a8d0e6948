' A page of a magazine: text boxes in the four alignments, and an article that flows through three columns.
'
' TextRect returns how many characters fitted into a box; the next box continues there. Run it with:
' quillbar run magazine_page.xojo_script [FILE]

Const kMargin As Double = 48
Const kGap As Double = 18
Const kBodySize As Double = 11.4
Const kBodyLeading As Double = 15.4

Dim fileName As String = "magazine_page.pdf"
If Arguments.LastIndex >= 0 Then fileName = Arguments(0)
Dim target As New FolderItem(fileName)
If target.Exists Then target.Delete ' Save never overwrites

Dim document As New PDFDocument(New CompressorHandle)
AddHandler document.ErrorLog, AddressOf ReportError
document.Title = "Under the lamp"
Dim body As Font = document.GetFont("Times-Roman", Font.FontEncodingEnum.WINDOWS_ANSI)
Dim italic As Font = document.GetFont("Times-Italic", Font.FontEncodingEnum.WINDOWS_ANSI)
Dim bold As Font = document.GetFont("Times-Bold", Font.FontEncodingEnum.WINDOWS_ANSI)
Dim sans As Font = document.GetFont("Helvetica-Bold", Font.FontEncodingEnum.WINDOWS_ANSI)

Dim p As Page = document.AddPage
p.SetSize(Page.PageSizeEnum.A4, Page.PageDirectionEnum.PORTRAIT)
p.TransformCoordinates = True
Dim columnWidth As Double = (p.Width - 2 * kMargin - 2 * kGap) / 3

DrawHeader
Dim rest As String = Article
rest = SetBox(body, kBodySize, kBodyLeading, &c222222, rest, kMargin, 262, columnWidth, 385, Page.TextAlignmentEnum.JUSTIFY)
DrawQuote(kMargin + columnWidth + kGap, 262)
rest = SetBox(body, kBodySize, kBodyLeading, &c222222, rest, kMargin + columnWidth + kGap, 420, columnWidth, 227, Page.TextAlignmentEnum.JUSTIFY)
rest = SetBox(body, kBodySize, kBodyLeading, &c222222, rest, kMargin + 2 * (columnWidth + kGap), 262, columnWidth, 380, Page.TextAlignmentEnum.JUSTIFY)
If rest <> "" Then Print Str(Len(rest)) + " characters of the article found no room"
DrawFactBox(kMargin + 2 * (columnWidth + kGap), 662)
DrawNight(kMargin, 662, 2 * columnWidth + kGap, 106)
DrawFooter

document.Save(target)
If target.Exists Then
  Print "Wrote " + target.NativePath + ": " + Format(target.Length / 1024, "0.0") + " KB"
Else
  StdErr.WriteLine("The file could not be written: " + target.NativePath)
  Quit(1)
End If

' Sets a text in a box and returns the rest that didn't fit.
Function SetBox(face As Font, size As Double, leading As Double, colour As Color, text As String, x As Double, top As Double, width As Double, height As Double, alignment As Page.TextAlignmentEnum) As String
  Dim used As Integer = 0
  p.FillColor = colour
  p.BeginText
  p.SetFont(face, size)
  p.TextLeading = leading
  p.TextRect(text, x, top, x + width, top + height, alignment, used)
  p.EndText
  Return Mid(text, used + 1)
End Function

Sub DrawHeader()
  p.FillColor = &cB3261E
  p.Rectangle(kMargin, 44, p.Width - 2 * kMargin, 4)
  p.Fill
  Call SetBox(sans, 9, 12, &cB3261E, "NATURE", kMargin, 54, 200, 16, Page.TextAlignmentEnum.LEFT)
  Call SetBox(italic, 9.5, 12, &c6B6B6B, "words by Ada Küster" + Chr(10) + "drawings by Søren Ågård", kMargin, 54, p.Width - 2 * kMargin, 32, Page.TextAlignmentEnum.RIGHT)
  Call SetBox(bold, 54, 56, &c222222, "Under the lamp", kMargin, 92, p.Width - 2 * kMargin, 74, Page.TextAlignmentEnum.CENTER)
  Call SetBox(italic, 15, 19, &c444444, "Every summer evening a small drama plays around the lights that we leave on. What do the moths see in them, and what do we lose when they are gone?", kMargin + 50, 178, p.Width - 2 * kMargin - 100, 62, Page.TextAlignmentEnum.CENTER)
End Sub

Sub DrawQuote(x As Double, top As Double)
  p.StrokeColor = &cB3261E
  p.LineWidth = 1.2
  p.MoveTo(x, top + 4)
  p.LineTo(x + columnWidth, top + 4)
  p.Draw
  Call SetBox(italic, 19, 23, &cB3261E, "“A moth does not love the flame. It has lost the horizon.”", x + 4, top + 14, columnWidth - 8, 118, Page.TextAlignmentEnum.CENTER)
  p.MoveTo(x, top + 138)
  p.LineTo(x + columnWidth, top + 138)
  p.Draw
End Sub

' The box is as high as its text: TextRectMeasure counts the lines first.
Sub DrawFactBox(x As Double, top As Double)
  Dim facts As String = "Warm light below 2200 K draws the fewest insects." + Chr(10) + "A shade that keeps light below the horizon halves the harm." + Chr(10) + "Off is best: moths find their way within minutes."
  p.BeginText
  p.SetFont(body, 9.4)
  p.TextLeading = 12
  Dim lines As Integer = 0
  Dim height As Double = p.TextRectMeasure(facts, columnWidth - 20, lines)
  p.EndText
  p.FillColor = &cF7ECE6
  p.Rectangle(x, top, columnWidth, height + 34)
  p.Fill
  Call SetBox(sans, 8.5, 12, &cB3261E, "WHAT HELPS", x + 10, top + 8, columnWidth - 20, 14, Page.TextAlignmentEnum.LEFT)
  Call SetBox(body, 9.4, 12, &c222222, facts, x + 10, top + 24, columnWidth - 20, height + 12, Page.TextAlignmentEnum.LEFT)
End Sub

' The lamp and those who circle it.
Sub DrawNight(x As Double, top As Double, width As Double, height As Double)
  p.FillColor = &c1B2433
  p.Rectangle(x, top, width, height)
  p.Fill
  Dim glow() As Color = Array(&c2A3242, &c45443F, &c7A6A3E, &cE9C46A)
  For i As Integer = 0 To glow.LastIndex
    p.FillColor = glow(i)
    p.Ellipse(x + width * 0.7, top + height / 2, 46 - i * 12, 46 - i * 12)
    p.Fill
  Next
  p.FillColor = &cD8D3C4
  For i As Integer = 0 To 22
    Dim angle As Double = i * 2.4
    Dim distance As Double = 22 + i * 1.1
    Dim mothX As Double = x + width * 0.7 + Cos(angle) * distance * 1.6
    Dim mothY As Double = top + height / 2 + Sin(angle) * distance * 0.9
    p.Ellipse(mothX - 1.6, mothY, 1.8, 0.8)
    p.Ellipse(mothX + 1.6, mothY, 1.8, 0.8)
    p.Fill
  Next
End Sub

Sub DrawFooter()
  Call SetBox(sans, 8, 10, &c6B6B6B, "FIELD & LAMP", kMargin, 790, 200, 14, Page.TextAlignmentEnum.LEFT)
  Call SetBox(sans, 8, 10, &c6B6B6B, "27", p.Width - kMargin - 100, 790, 100, 14, Page.TextAlignmentEnum.RIGHT)
End Sub

Function Article() As String
  Dim paragraphs() As String
  paragraphs.Append("It begins at dusk. The first to come are the small brown ones, which nobody names; then the carpets and the waves, the prominents with their tufts, and on a good night a hawk moth that crosses the beam like a thrown stone. They circle, drop, climb again, and circle on until the lamp goes out or they do.")
  paragraphs.Append("For a long time people thought that insects mistake a lamp for the moon and keep it at a constant angle, so that a straight course turns into a spiral. It is a neat idea, and it is wrong. High-speed cameras show something stranger: near a light, insects turn their backs to it. In the open, the brightest part of the world is the sky, and a back that is kept towards it is a body that flies level. Beside a lamp the same reflex rolls them over.")
  paragraphs.Append("So the moth is not drawn to the light as much as trapped by it. Whoever flies past is tilted; whoever is tilted turns; whoever turns comes back. Above the lamp they flip over and fall. What looks like longing is a loss of balance.")
  paragraphs.Append("In the garden of the old station we put up a white sheet and a lamp, as collectors have done for two hundred years, and counted. On the first warm night of May there were ninety-one moths of thirty-four kinds. A week later the town replaced its street lights, and on the next warm night there were twenty-two.")
  paragraphs.Append("Numbers of one garden prove nothing, and the old hands say that there are bad years. But they also remember when a drive across the plain on a summer night ended with a windscreen that had to be scraped. Nobody scrapes anything now.")
  paragraphs.Append("What would help is little. A lamp that shines down and not around; a warm colour instead of the cold white that is sold as day; above all a switch. The night is long enough for all of us, as long as it stays night.")
  Return Join(paragraphs, Chr(10))
End Function

Sub ReportError(sender As PDFDocument, errorNumber As UInt32, detail As UInt32)
  Print "The PDF library reports error " + Str(errorNumber) + " (" + Str(detail) + ")"
End Sub
