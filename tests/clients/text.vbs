' The text members in what only a script's variables show: arrays that change or are replaced,
' arguments left out, values of other types, errors.
Option Explicit

Dim text
Set text = CreateObject("VelaUtil10.TextUtil")
On Error Resume Next
Main
If Err.Number <> 0 Then Fail Err.Number & " " & Err.Description
WScript.Echo "text.vbs: passed"

Sub Main()
    ReplacedArrays
    ChangedArrays
    LeftOut
    OtherTypes
    TheOthers
    Errors
End Sub

Sub ReplacedArrays()
    Dim nothingYet, dynamic(), given, again
    Check "into an empty variable", text.SeparaPorChar("a;b;c", ";", nothingYet), 3
    Check "from 0 on", LBound(nothingYet) & UBound(nothingYet) & Joined(nothingYet, " "), "02a b c"
    Check "into a dynamic array", text.ParteTexto("one two", dynamic, 3), 2
    Check "its lines", Joined(dynamic, "/"), "one/two"
    given = Array(1, 2, 3, 4)
    Check "over another", text.SeparaPorChar("x", ";", given), 1
    Check "only the new", UBound(given) & given(0), "0x"
    again = given
    Check "none", text.SeparaPorChar("", ";", given), 0
    Check "no elements", UBound(given), -1
    Check "the copy stays", again(0), "x"
End Sub

Sub ChangedArrays()
    Dim fixed(2), numbers, which, place
    fixed(0) = "c"
    fixed(1) = "a"
    fixed(2) = "b"
    text.OrdenarArrayStr fixed
    Check "sorted", Joined(fixed, ""), "abc"
    numbers = Array(20, 3)
    text.ProcuraUmDeVarios 1203, 1, numbers, which, place
    Check "numbers as texts", which & place, "12"
    Check "their type stays", VarType(numbers(0)), vbInteger
    text.ProcuraUmDeVarios "abc", 1, Array("c", "b"), which, place
    Check "an expression", which & place, "22"
End Sub

Sub LeftOut()
    Dim side, filler
    side = "1"
    filler = 0
    Check "side and filler", text.StrAlinhar("ab", 4) & "|", "ab  |"
    Check "filler", text.StrAlinhar("ab", 4, side), "  ab"
    Check "side", text.StrAlinhar("ab", 4, , filler), "ab00"
    Check "both types stay", VarType(side) & VarType(filler), vbString & vbInteger
    Check "no minus, no fraction", text.SoNumeros("-1") Or text.SoNumeros("1" & Point()), False
    Check "fraction", text.SoNumeros("1" & Point() & "5", , True), True
End Sub

Sub OtherTypes()
    Dim number, word, item, copy
    number = 12
    word = "ab"
    text.SwapTxt number, word
    Check "exchanged", number & word & VarType(word), "ab12" & vbString
    Set item = CreateObject("VelaUtil10.KeyValue")
    text.CopyStr item, copy
    Check "an object", copy Is item, True
    text.CopyStr Null, copy
    Check "Null", IsNull(copy), True
    Check "in the user's locale", text.StrPontoDecimal("1" & Point() & "50"), "1.5"
    Check "all digits", text.StrPontoDecimal(CCur("123456789012" & Point() & "3456")), _
        "123456789012.3456"
    Check "no number", text.StrPontoDecimal(Null) & text.StrPontoDecimal("x"), ""
    Check "of a number", text.SemAlfa(12) & text.SemAlfa(Empty), "12"
End Sub

' Not every script engine has Join.
Function Joined(texts, separator)
    Dim i
    For i = LBound(texts) To UBound(texts)
        If i > LBound(texts) Then Joined = Joined & separator
        Joined = Joined & texts(i)
    Next
End Function

' The decimal separator.
Function Point()
    Point = Mid(1.5, 2, 1)
End Function

Sub TheOthers()
    Dim first, last, code, number, word
    Check "ProcTras", text.ProcTras("abcabc", "bc", 4), 2
    Check "ProcurarPar", text.ProcurarPar(1, "f(a(b))", "()"), 7
    Check "ProcuraAbrirFechar", text.ProcuraAbrirFechar("f(a(b))", "()", first, last), 2
    Check "its marks", first & last, "27"
    Check "QuantosCaracteres", text.QuantosCaracteres("banana", "an"), 3
    Check "StrCharValidos", text.StrCharValidos("12,5 EUR", "0123456789,"), "12,5"
    Check "SoEstesChar", text.SoEstesChar("12,5 EUR", "0123456789,", "_"), "12,5____"
    Check "SemEspacos", text.SemEspacos(" a b "), "ab"
    Check "SemNumeros", text.SemNumeros("a1b22"), "ab"
    text.TelefoneSeparaIndicativoNumero "+351 912 345 678", code, number
    Check "TelefoneSeparaIndicativoNumero", code & " " & number, "91 2345678"
    Check "QueConteudoSql", text.QueConteudoSql("O'Neil"), "'O''Neil'"
    Check "PreparaTextoComVars", text.PreparaTextoComVars("@X1 of @X2", Array(3, "ten")), "3 of ten"
    Check "UTrim", text.UTrim(" ab "), "AB"
    word = "abcab"
    text.MudaChar word, "ab", "-"
    text.MudaChar2 word, "-", "+"
    text.MudaCharComMascara word, "[a-z]", "x"
    Check "MudaChar and its kin", word, "+x+"
    word = "S" & Chr(227) & "o"
    text.SubstituirAcentos word
    Check "SubstituirAcentos", word, "Sao"
End Sub

Sub Errors()
    Dim variable, long
    long = String(40000, "a")
    variable = Array("kept")
    On Error Resume Next
    text.QuantosChar long, "a"
    Expect 6
    text.ProcuraPrimeiroDeVarios 1, long & "b", "b"
    Expect 6
    text.SeparaPorChar long, "a", variable
    Expect 6
    text.ParteTexto "abc", variable, 0
    Expect 5
    Check "left alone", variable(0), "kept"
    variable = "kept"
    text.MudaCharComMascara variable, "[k", ""
    Expect 93
    Check "left alone", variable, "kept"
    text.OrdenarArrayStr variable
    Expect 13
    text.SemAlfa Array("a")
    Expect 13
End Sub

Sub Expect(number)
    Dim found
    found = Err.Number
    Err.Clear
    Check "error", found, number
End Sub

Sub Check(what, given, wanted)
    If given <> wanted Then Fail what & ": '" & given & "', not '" & wanted & "'"
End Sub

' Ends the program: an error raised here would be lost where errors are passed over.
Sub Fail(why)
    WScript.Echo "text.vbs: " & why
    WScript.Quit 1
End Sub
