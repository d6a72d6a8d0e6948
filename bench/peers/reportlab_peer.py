# SPDX-License-Identifier: MIT
"""ReportLab: `reportlab_peer.py text|paths PAGES plain|compressed LINES FILE` writes the document to FILE."""
import sys

from reportlab.lib.pagesizes import A4
from reportlab.pdfgen.canvas import Canvas


def write_text(canvas, lines):
    text = canvas.beginText(56, 780)
    text.setFont("Helvetica", 10.5, leading=14.25)
    for line in lines:
        text.textLine(line)
    canvas.drawText(text)


def write_paths(canvas):
    for figure in range(100):
        x = 20 + figure % 10 * 55.37
        y = 20 + figure // 10 * 79.91
        shade = figure / 100
        canvas.setStrokeColorRGB(shade, 0.25, 1 - shade)
        canvas.setLineWidth(0.25 + shade)
        path = canvas.beginPath()
        path.moveTo(x, y)
        path.lineTo(x + 41.5, y + 3.25)
        path.lineTo(x + 38.125, y + 61.75)
        path.curveTo(x + 30.1, y + 70.2, x + 12.3, y + 66.4, x + 5.5, y + 40.6)
        path.curveTo(x + 1.7, y + 30.8, x - 3.9, y + 11.1, x, y)
        canvas.drawPath(path)
        canvas.rect(x + 8, y + 9, 21.7, 33.3)


def main():
    content, pages, compression, lines_file, file = sys.argv[1:]
    with open(lines_file, encoding="ascii") as source:
        lines = source.read().splitlines()
    canvas = Canvas(file, pagesize=A4, pageCompression=int(compression == "compressed"))
    for _ in range(int(pages)):
        if content == "text":
            write_text(canvas, lines)
        else:
            write_paths(canvas)
        canvas.showPage()
    canvas.save()


main()
