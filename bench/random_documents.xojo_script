' Writes random documents that together use every member of the plugin, and prints what the members answer.
'
' quillbar run random_documents.xojo_script FOLDER FIRST COUNT writes FOLDER/FIRST.pdf and the following ones. A number is
' the seed of its document, so two plugins that do the same write the same bytes and print the same lines.
' bench/compare-plugins holds two plugins against each other this way.

Const kDejaVu As String = "/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf"
Const kMono As String = "/usr/share/fonts/truetype/dejavu/DejaVuSansMono.ttf"
Const kMincho As String = "/usr/share/fonts/opentype/ipafont-mincho/ipam.ttf"
Const kType1 As String = "/usr/share/fonts/type1/urw-base35/NimbusRoman-Regular"

Dim rand As New Random
Dim log As String
Dim errorCount As Integer

Dim folder As New FolderItem(Arguments(0))
Dim first As Integer = Val(Arguments(1))
For seed As Integer = first To first + Val(Arguments(2)) - 1
  WriteDocument(seed, folder)
Next

Sub WriteDocument(seed As Integer, folder As FolderItem)
  rand.Seed = seed
  Dim document As PDFDocument
  If Chance(50) Then
    document = New PDFDocument(New CompressorHandle)
  Else
    document = New PDFDocument
  End If
  AddHandler document.ErrorLog, AddressOf NoteError
  AddHandler document.ResolveFont, AddressOf Resolve
  log = "document " + Str(seed)
  errorCount = 0

  If Chance(50) Then document.Title = Words(4)
  If Chance(30) Then document.Author = Words(2)
  If Chance(20) Then document.Subject = Words(9)
  If Chance(20) Then document.KeyWords = Words(3)
  If Chance(20) Then document.Creator = Words(1)
  If Chance(30) Then document.Mode = CType(rand.InRange(0, 4), PDFDocument.DocumentModeEnum)

  Dim fonts() As Font = Fonts(document)
  Dim images() As Image = Images(document)
  Dim destinations() As Destination
  Dim states() As ExtendedGraphicsState
  For index As Integer = 1 To rand.InRange(0, 2)
    states.Append(NewState(document))
  Next
  Dim pages() As Page
  Dim count As Integer = rand.InRange(1, 4)
  For index As Integer = 1 To count
    Dim p As Page = document.AddPage
    pages.Append(p)
    If Chance(60) Then p.SetSize(CType(rand.InRange(0, 12), Page.PageSizeEnum), CType(rand.InRange(0, 1), Page.PageDirectionEnum))
    If Chance(10) Then p.Width = Number(1000)
    If Chance(10) Then p.Height = Number(1000)
    If Chance(20) Then p.TransformCoordinates = True
    If Chance(60) Then destinations.Append(NewDestination(p))
    FillPage(p, fonts, images, states)
    If Chance(50) Then Annotate(p, destinations)
  Next
  AddOutlines(document, destinations)
  If Chance(20) Then
    ' What is added after a save is in the next one.
    log = log + " saved " + Str(document.SaveToString.Bytes)
    FillPage(pages(rand.InRange(0, pages.LastIndex)), fonts, images, states)
  End If
  log = log + " errors " + Str(errorCount) + " last " + Str(document.LastErrorNumber)
  If Chance(5) Then document.ClearError
  document.Save(folder.Child(Str(seed) + ".pdf"))
  Print log
End Sub

Sub NoteError(sender As PDFDocument, number As UInt32, detail As UInt32)
  errorCount = errorCount + 1
  log = log + " [" + Str(number) + " " + Str(detail) + "]"
End Sub

Function Resolve(sender As PDFDocument, text As String, script As PDFDocument.LanguageScript, current As Font) As Font
  log = log + " script " + Str(CType(script, Integer)) + " " + Str(text.Length)
  Return Nil
End Function

Function Chance(percent As Integer) As Boolean
  Return rand.InRange(1, 100) <= percent
End Function

Function Number(most As Integer) As Single
  Select Case rand.InRange(0, 19)
  Case 0
    Return 0
  Case 1
    Return -rand.InRange(0, most * 1000) / 1000
  Case 2
    Return most * 1000
  Case 3
    Return rand.InRange(0, 99999) / 1.0e7
  Case Else
    Return rand.InRange(0, most * 1000) / 1000
  End Select
End Function

Function Share() As Single
  If Chance(5) Then Return Number(2)
  Return rand.InRange(0, 1000) / 1000
End Function

Function Words(count As Integer) As String
  Dim list() As String = Array("harbour", "invoice", "Straße", "naïve", "żółw", "Ελλάδα", "Привет", "日本語", "東京都", "한국어", _
    "中文", "ไทย", "नमस्ते", "שלום", "مرحبا", "(a\b)", "x²", "€ 12,50", "e" + Chr(769), "😀", "-", "A", "", "1/2", "Ω", "fi", "…")
  Dim plain() As String = Array("time", "paper", "ink", "page", "ledger", "total", "amount", "due", "net", "quarter")
  Dim text As String
  For index As Integer = 1 To count
    If index > 1 Then text = text + " "
    If Chance(25) Then
      text = text + list(rand.InRange(0, list.LastIndex))
    Else
      text = text + plain(rand.InRange(0, plain.LastIndex))
    End If
    If Chance(4) Then text = text + EndOfLine
  Next
  Return text
End Function

Function Fonts(document As PDFDocument) As Font()
  Dim result() As Font
  Dim names() As String = Array("Helvetica", "Helvetica-Bold", "Helvetica-Oblique", "Times-Roman", "Times-BoldItalic", "Courier", _
    "Courier-Bold", "Symbol", "ZapfDingbats", "MS-Mincho", "SimSun", "Batang", "No such font")
  Dim encodings() As Integer = Array(0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 13, 14, 15, 25, 26, 27, 28, 29, 30, 31, 32, 33, 40, 100, 1, 1, 100, 100)
  For index As Integer = 1 To rand.InRange(1, 4)
    Dim loaded As Font
    Select Case rand.InRange(0, 9)
    Case 0
      loaded = document.LoadTrueTypeFont(New FolderItem(kDejaVu))
    Case 1
      loaded = document.LoadTrueTypeFont(New FolderItem(kMono))
    Case 2
      loaded = document.LoadTrueTypeFont(New FolderItem(kMincho))
    Case 3
      loaded = document.LoadType1Font(New FolderItem(kType1 + ".afm"), New FolderItem(kType1 + ".t1"), _
        CType(encodings(rand.InRange(0, encodings.LastIndex)), Font.FontEncodingEnum))
    Case Else
      loaded = document.GetFont(names(rand.InRange(0, names.LastIndex)), _
        CType(encodings(rand.InRange(0, encodings.LastIndex)), Font.FontEncodingEnum))
    End Select
    If loaded = Nil Then
      log = log + " nofont"
    Else
      log = log + " " + loaded.Name + " " + Str(loaded.Ascent) + " " + Str(loaded.Descent) + " " + Str(loaded.BoundingBoxLeft) _
        + " " + Str(loaded.BoundingBoxBottom) + " " + Str(loaded.BoundingBoxRight) + " " + Str(loaded.BoundingBoxTop)
      result.Append(loaded)
    End If
  Next
  Return result
End Function

Function Images(document As PDFDocument) As Image()
  Dim result() As Image
  For index As Integer = 1 To rand.InRange(0, 2)
    Dim loaded As Image
    If Chance(30) Then
      loaded = document.LoadJPEGImage(JPEG)
    Else
      Dim raster As PixelRaster
      Dim bits As Integer = 8
      If Chance(30) Then bits = 16
      If Chance(50) Then
        raster = New PixelRaster(rand.InRange(1, 9), rand.InRange(1, 9), rand.InRange(1, 5), bits)
      Else
        raster = New PixelRaster(rand.InRange(1, 9), rand.InRange(1, 9), _
          CType(rand.InRange(0, 2), PixelRaster.ColorModelEnum), Chance(50), bits)
      End If
      If raster.Width > 0 Then
        For y As Integer = 0 To raster.Height - 1
          For x As Integer = 0 To raster.Width - 1
            For channel As Integer = 0 To raster.ChannelCount - 1
              raster.SetComponent(x, y, channel, rand.InRange(0, 255))
            Next
          Next
        Next
      End If
      loaded = document.LoadImage(raster)
    End If
    If loaded = Nil Then
      log = log + " noimage"
    Else
      log = log + " image " + Str(loaded.Width) + "x" + Str(loaded.Height)
      result.Append(loaded)
    End If
  Next
  Return result
End Function

Function JPEG() As String
  Dim names() As String = Array("autumn", "bay", "dawn", "winter")
  Dim stream As BinaryStream = BinaryStream.Open(New FolderItem("examples/data/pictures/" + names(rand.InRange(0, 3)) + ".jpg"))
  Dim data As String = stream.Read(stream.Length)
  stream.Close
  If Chance(10) Then data = data.LeftBytes(data.Bytes \ 2)
  If Chance(5) Then data = data.LeftBytes(30)
  Return data
End Function

Function NewState(document As PDFDocument) As ExtendedGraphicsState
  Dim state As ExtendedGraphicsState = document.CreateExtendedGraphicsState
  If Chance(70) Then state.SetAlphaFill(Share)
  If Chance(50) Then state.SetAlphaStroke(Share)
  If Chance(50) Then state.SetBlendMode(CType(rand.InRange(0, 12), ExtendedGraphicsState.BlendModeEnum))
  Return state
End Function

Function NewDestination(p As Page) As Destination
  Dim target As Destination = p.CreateDestination
  If Chance(70) Then target.SetLocation(Number(600), Number(800), Share * 4)
  Return target
End Function

Sub Annotate(p As Page, destinations() As Destination)
  For index As Integer = 1 To rand.InRange(1, 3)
    Dim x As Single = Number(400)
    Dim y As Single = Number(600)
    Select Case rand.InRange(0, 2)
    Case 0
      Dim note As TextAnnotation = p.CreateTextAnnotation(Words(5), x, y, x + Number(90), y + Number(40))
      If note <> Nil Then
        If Chance(50) Then note.SetIcon(CType(rand.InRange(0, 7), TextAnnotation.AnnotationIconEnum))
        If Chance(50) Then note.SetColor(Color.RGB(rand.InRange(0, 255), rand.InRange(0, 255), rand.InRange(0, 255)))
        If Chance(50) Then note.SetOpened(Chance(50))
      End If
    Case 1
      Dim link As URLAnnotation = p.CreateURLAnnotation("https://example.com/?q=" + Words(1), x, y, x + 80, y - 12)
      log = log + If(link = Nil, " nolink", " link")
    Case 2
      If destinations.LastIndex >= 0 Then
        Dim link As LinkAnnotation = p.CreateLinkAnnotation(destinations(rand.InRange(0, destinations.LastIndex)), x, y, x + 80, y - 12)
        log = log + If(link = Nil, " nolink", " link")
      End If
    End Select
  Next
End Sub

Sub AddOutlines(document As PDFDocument, destinations() As Destination)
  Dim parents() As Outline
  For index As Integer = 1 To rand.InRange(0, 6)
    Dim parent As Outline
    If parents.LastIndex >= 0 And Chance(60) Then parent = parents(rand.InRange(0, parents.LastIndex))
    Dim entry As Outline = document.CreateOutline(parent, Words(3))
    If entry <> Nil Then
      parents.Append(entry)
      If destinations.LastIndex >= 0 And Chance(80) Then entry.SetDestination(destinations(rand.InRange(0, destinations.LastIndex)))
      If Chance(30) Then entry.Opened = Chance(50)
    End If
  Next
End Sub

Sub FillPage(p As Page, fonts() As Font, images() As Image, states() As ExtendedGraphicsState)
  For index As Integer = 1 To rand.InRange(5, 40)
    Select Case rand.InRange(0, 9)
    Case 0, 1
      Draw(p)
    Case 2, 3, 4
      If fonts.LastIndex >= 0 Then Write(p, fonts(rand.InRange(0, fonts.LastIndex)))
    Case 5
      Box(p, fonts)
    Case 6
      Paint(p)
    Case 7
      If images.LastIndex >= 0 Then p.DrawImage(images(rand.InRange(0, images.LastIndex)), Number(500), Number(700), Number(300), Number(300))
    Case 8
      If states.LastIndex >= 0 Then p.SetExtendedState(states(rand.InRange(0, states.LastIndex)))
    Case 9
      Anything(p)
    End Select
  Next
  log = log + " mode " + Str(CType(p.GraphicsMode, Integer)) + " " + Str(p.Width) + "x" + Str(p.Height)
End Sub

Sub Draw(p As Page)
  Select Case rand.InRange(0, 4)
  Case 0
    p.Rectangle(Number(500), Number(700), Number(100), Number(100))
  Case 1
    p.Ellipse(Number(500), Number(700), Number(100), Number(100))
  Case 2
    p.Arc(Number(500), Number(700), Number(100), Number(720) - 360, Number(720) - 360)
  Case Else
    p.MoveTo(Number(500), Number(700))
    For index As Integer = 1 To rand.InRange(1, 4)
      Select Case rand.InRange(0, 3)
      Case 0
        p.LineTo(Number(500), Number(700))
      Case 1
        p.CurveTo(Number(500), Number(700), Number(500), Number(700), Number(500), Number(700))
      Case 2
        p.CurveTo2(Number(500), Number(700), Number(500), Number(700))
      Case 3
        p.CurveTo3(Number(500), Number(700), Number(500), Number(700))
      End Select
    Next
  End Select
  Select Case rand.InRange(0, 5)
  Case 0
    p.Fill
  Case 1
    p.FillAndDraw
  Case 2
    p.Clip
    p.EndPath
  Case 3
    p.EndPath
  Case Else
    p.Draw
  End Select
End Sub

Sub Write(p As Page, f As Font)
  p.BeginText
  p.SetFont(f, Number(40))
  For index As Integer = 1 To rand.InRange(1, 5)
    Select Case rand.InRange(0, 11)
    Case 0
      p.MoveTextPosition(Number(300), Number(300))
    Case 1
      p.MoveTextPositionNextLine
    Case 2
      p.SetTextMatrix(Share, Share, Share, Share, Number(300), Number(300))
    Case 3
      p.SetTextRotation(Number(360), Number(300), Number(300))
    Case 4
      p.ShowTextNextLine(Words(4))
    Case 5
      p.TextLeading = Number(30)
    Case 6
      p.TextRise = Number(10)
    Case 7
      p.WordSpace = Number(10)
    Case 8
      p.TextRenderingMode = CType(rand.InRange(0, 8), Page.TextRenderingModeEnum)
    Case Else
      p.ShowText(Words(5))
    End Select
  Next
  Dim x As Single
  Dim y As Single
  p.GetCurrentTextPosition(x, y)
  log = log + " at " + Str(x) + "," + Str(y)
  If Chance(95) Then p.EndText
End Sub

Sub Box(p As Page, fonts() As Font)
  If fonts.LastIndex >= 0 Then p.SetFont(fonts(rand.InRange(0, fonts.LastIndex)), Number(30))
  Dim length As Integer
  Dim width As Single
  Dim text As String = Words(rand.InRange(0, 40))
  Dim alignment As Page.TextAlignmentEnum = CType(rand.InRange(0, 3), Page.TextAlignmentEnum)
  Select Case rand.InRange(0, 3)
  Case 0
    p.BeginText
    Dim left As Single = Number(300)
    Dim top As Single = Number(600)
    p.TextRect(text, left, top, left + Number(300), top - Number(300), alignment, length)
    p.EndText
  Case 1
    p.BeginText
    p.TextRectBaseline(text, Number(300), Number(600), Number(300), Number(300), alignment, length)
    p.EndText
  Case 2
    log = log + " height " + Str(p.TextRectMeasure(text, Number(400), length))
  Case 3
    length = p.MeasureText(text, Number(400), Chance(50), width)
    log = log + " fits " + Str(p.MeasureText(text, Number(400), Chance(50))) + " width " + Str(width)
  End Select
  log = log + " length " + Str(length) + " leading " + Str(p.SuggestedTextLeading)
End Sub

Sub Paint(p As Page)
  Select Case rand.InRange(0, 9)
  Case 0
    p.FillColor = Color.RGB(rand.InRange(0, 255), rand.InRange(0, 255), rand.InRange(0, 255))
  Case 1
    p.StrokeColor = Color.RGB(rand.InRange(0, 255), rand.InRange(0, 255), rand.InRange(0, 255))
  Case 2
    p.SetCMYKFill(Share, Share, Share, Share)
  Case 3
    p.SetCMYKStroke(Share, Share, Share, Share)
  Case 4
    p.SetRGBFill(Share, Share, Share)
  Case 5
    p.SetRGBStroke(Share, Share, Share)
  Case 6
    p.LineWidth = Number(10)
  Case 7
    p.LineCapType = CType(rand.InRange(0, 3), Page.LineCapTypeEnum)
  Case 8
    p.LineJoinType = CType(rand.InRange(0, 3), Page.LineJoinTypeEnum)
  Case 9
    Dim dashes() As UInt16
    For index As Integer = 1 To rand.InRange(0, 9)
      dashes.Append(rand.InRange(0, 12))
    Next
    p.SetDashPattern(dashes, rand.InRange(0, 9))
    If Chance(50) Then p.ResetDashPattern
  End Select
  log = log + " " + Str(p.FillColor) + " " + Str(p.StrokeColor) + " " + Str(p.LineWidth) + " " + Str(CType(p.LineCapType, Integer)) _
    + " " + Str(CType(p.LineJoinType, Integer)) + " " + Str(p.TextLeading) + " " + Str(p.TextRise) + " " + Str(p.WordSpace) _
    + " " + Str(CType(p.TextRenderingMode, Integer))
End Sub

' Calls in any mode, most of which a page refuses in some.
Sub Anything(p As Page)
  Select Case rand.InRange(0, 9)
  Case 0
    p.SaveState
  Case 1, 2
    p.RestoreState
  Case 3
    p.ConcatMatrix(Share, Share, Share, Share, Number(100), Number(100))
  Case 4
    p.LineTo(Number(500), Number(700))
  Case 5
    p.ShowText(Words(2))
  Case 6
    p.EndText
  Case 7
    p.EndPath
  Case 8
    p.Draw
  Case 9
    p.TransformCoordinates = Chance(50)
  End Select
End Sub
