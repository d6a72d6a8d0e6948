' A poster: light mixed by blend modes, shapes that shine through, and a raster with its own transparency.
'
' Run it with: quillbar run poster.xojo_script [FILE]

Const kPi As Double = 3.14159265358979

Dim fileName As String = "poster.pdf"
If Arguments.LastIndex >= 0 Then fileName = Arguments(0)
Dim target As New FolderItem(fileName)
If target.Exists Then target.Delete ' Save never overwrites

Dim document As New PDFDocument(New CompressorHandle)
document.Title = "Light"
Dim bold As Font = document.GetFont("Helvetica-Bold", Font.FontEncodingEnum.WINDOWS_ANSI)
Dim regular As Font = document.GetFont("Helvetica", Font.FontEncodingEnum.WINDOWS_ANSI)
Dim p As Page = document.AddPage
p.SetSize(Page.PageSizeEnum.A3, Page.PageDirectionEnum.PORTRAIT)
p.TransformCoordinates = True

p.FillColor = &c10131C
p.Rectangle(0, 0, p.Width, p.Height)
p.Fill

' A glow: a raster whose opacity fades from its middle outwards.
p.DrawImage(document.LoadImage(Glow(200)), -100, 20, 1040, 1040)

' Three lamps: their light adds up to white where all of them meet.
p.SaveState
p.SetExtendedState(NewState(ExtendedGraphicsState.BlendModeEnum.SCREEN, 1))
Disc(420 + 120 * Cos(-kPi / 2), 475 + 120 * Sin(-kPi / 2), 190, &cFF2A2A)
Disc(420 + 120 * Cos(kPi / 6), 475 + 120 * Sin(kPi / 6), 190, &c2AFF4A)
Disc(420 + 120 * Cos(5 * kPi / 6), 475 + 120 * Sin(5 * kPi / 6), 190, &c2A4AFF)
p.RestoreState

' A fan of sheets, each a little transparent.
p.SaveState
p.SetExtendedState(NewState(ExtendedGraphicsState.BlendModeEnum.NORMAL, 0.35))
For i As Integer = 0 To 11
  Dim angle As Double = i * kPi / 12
  p.FillColor = Wheel(i / 12)
  p.MoveTo(190, 960)
  p.LineTo(190 + 145 * Cos(angle - 0.2), 960 - 145 * Sin(angle - 0.2))
  p.LineTo(190 + 145 * Cos(angle + 0.2), 960 - 145 * Sin(angle + 0.2))
  p.Fill
Next
p.RestoreState

' All the modes, each on the same ground.
Dim names() As String = Array("Normal", "Multiply", "Screen", "Overlay", "Darken", "Lighten", "Color dodge", _
  "Color burn", "Hard light", "Soft light", "Difference", "Exclusion")
For i As Integer = 0 To 11
  DrawSample(370 + (i Mod 4) * 110, 800 + (i \ 4) * 112, i)
Next

WriteText(bold, 84, &cFFFFFF, 48, 122, "Light")
WriteText(regular, 18, &cA9B4C8, 52, 152, "adds up, passes through and takes away")
document.Save(target)
If target.Exists Then
  Print "Wrote " + target.NativePath + ": " + Format(target.Length / 1024, "0") + " KB"
Else
  StdErr.WriteLine("The file could not be written: " + target.NativePath)
  Quit(1)
End If

Function NewState(mode As ExtendedGraphicsState.BlendModeEnum, opacity As Double) As ExtendedGraphicsState
  Dim state As ExtendedGraphicsState = document.CreateExtendedGraphicsState
  state.SetBlendMode(mode)
  state.SetAlphaFill(opacity)
  state.SetAlphaStroke(opacity)
  Return state
End Function

' Every pixel white; the opacity falls off with the distance from the middle.
Function Glow(size As Integer) As PixelRaster
  Dim raster As New PixelRaster(size, size, 4)
  For y As Integer = 0 To size - 1
    For x As Integer = 0 To size - 1
      Dim dx As Double = (x + 0.5) / size - 0.5
      Dim dy As Double = (y + 0.5) / size - 0.5
      Dim share As Double = Max(0, 1 - 2 * Sqrt(dx * dx + dy * dy))
      raster.SetComponent(x, y, 0, 120)
      raster.SetComponent(x, y, 1, 150)
      raster.SetComponent(x, y, 2, 255)
      raster.SetComponent(x, y, 3, Round(share * share * 150))
    Next
  Next
  Return raster
End Function

Sub Disc(x As Double, y As Double, radius As Double, colour As Color)
  p.FillColor = colour
  p.Ellipse(x, y, radius, radius)
  p.Fill
End Sub

' A colour of the rainbow, from 0 to 1.
Function Wheel(share As Double) As Color
  Dim r As Integer = Round(127.5 * (1 + Cos(2 * kPi * share)))
  Dim g As Integer = Round(127.5 * (1 + Cos(2 * kPi * (share - 1 / 3))))
  Dim b As Integer = Round(127.5 * (1 + Cos(2 * kPi * (share - 2 / 3))))
  Return RGB(r, g, b)
End Function

' A strip of colours with a disc in this blend mode on it.
Sub DrawSample(x As Double, y As Double, mode As Integer)
  For strip As Integer = 0 To 5
    p.FillColor = Wheel(strip / 6)
    p.Rectangle(x + strip * 16, y, 16, 76)
    p.Fill
  Next
  p.SaveState
  p.SetExtendedState(NewState(CType(mode, ExtendedGraphicsState.BlendModeEnum), 1))
  p.FillColor = &cD98C40
  p.Ellipse(x + 48, y + 38, 34, 30)
  p.Fill
  p.RestoreState
  WriteText(regular, 10, &cA9B4C8, x, y + 90, names(mode))
End Sub

Sub WriteText(face As Font, size As Double, colour As Color, x As Double, y As Double, text As String)
  p.BeginText
  p.SetFont(face, size)
  p.FillColor = colour
  p.MoveTextPosition(x, y)
  p.ShowText(text)
  p.EndText
End Sub
