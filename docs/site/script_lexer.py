# SPDX-License-Identifier: MIT
"""The colours of scripts on the site."""
import re

from pygments.lexer import RegexLexer, words
from pygments.token import Comment, Keyword, Name, Number, Operator, Punctuation, String, Text

KEYWORDS = (
    "AddHandler", "AddressOf", "And", "Array", "As", "Assigns", "ByRef", "ByVal", "Call", "Case", "Catch", "Class", "Const",
    "Continue", "CType", "Delegate", "Dim", "Do", "DownTo", "Each", "Else", "ElseIf", "End", "Enum", "Event", "Exit",
    "Extends", "Finally", "For", "Function", "Get", "If", "Implements", "In", "Inherits", "Interface", "Is", "IsA", "Loop",
    "Me", "Mod", "Module", "New", "Next", "Not", "Optional", "Or", "ParamArray", "Private", "Property", "Protected",
    "Public", "Raise", "RaiseEvent", "Redim", "RemoveHandler", "Return", "Select", "Self", "Set", "Shared", "Static",
    "Step", "Sub", "Super", "Then", "To", "Try", "Until", "Using", "Var", "Wend", "While", "Xor")
CONSTANTS = ("True", "False", "Nil")
TYPES = (
    "Boolean", "Byte", "Color", "Currency", "Double", "Int8", "Int16", "Int32", "Int64", "Integer", "Single", "String",
    "UInt8", "UInt16", "UInt32", "UInt64", "UInteger", "Variant")


class ScriptLexer(RegexLexer):
    """The script language of `quillbar`."""

    name = "Quillbar script"
    aliases = ["vb"]
    flags = re.IGNORECASE
    tokens = {
        "root": [
            (r"('|//|Rem\b).*", Comment.Single),
            (r"#\w+.*", Comment.Preproc),
            (r'"(?:[^"\n]|"")*"', String.Double),
            (r"&[hbocu][0-9a-f]+", Number.Hex),
            (r"\d+(\.\d+)?(e[+-]?\d+)?", Number),
            (words(CONSTANTS, prefix=r"\b", suffix=r"\b"), Keyword.Constant),
            (words(TYPES, prefix=r"\b", suffix=r"\b"), Keyword.Type),
            (r"(\.)(\w+)", Name),
            (words(KEYWORDS, prefix=r"\b", suffix=r"\b"), Keyword),
            (r"\w+", Name),
            (r"[-+*/\\^=<>:]", Operator),
            (r"[(),.]", Punctuation),
            (r"\s+|.", Text),
        ],
    }
