' The text members in what only a script's variables show: arrays that are replaced, variables that
' keep their type, numbers of the user's locale, errors that change nothing.
Option Explicit

Dim text
Set text = CreateObject("VelaUtil10.TextUtil")
On Error Resume Next
Main
If Err.Number <> 0 Then Fail Err.Number & " " & Err.Description
WScript.Echo "text.vbs: passed"

Sub Main()
    Arrays
    Types
    Locale
    Errors
End Sub

Sub Arrays()
    Dim dynamic(), fixed(1), given, numbers, which, place
    Check "into a dynamic array", text.ParteTexto("one two", dynamic, 3) & dynamic(1), "2two"
    given = Array(1, 2, 3, 4)
    Check "over another", text.SeparaPorChar("x", ";", given) & UBound(given) & given(0), "10x"
    fixed(0) = "b"
    fixed(1) = "a"
    text.OrdenarArrayStr fixed
    Check "sorted", fixed(0) & fixed(1), "ab"
    numbers = Array(20, 3)
    text.ProcuraUmDeVarios 1203, 1, numbers, which, place
    Check "numbers as texts", which & place & VarType(numbers(0)), "12" & vbInteger
End Sub

Sub Types()
    Dim key
    key = 1234
    Check "hidden", text.Desencriptar(text.Encriptar("Lisboa", key), "1234"), "Lisboa"
    Check "the key", VarType(key), vbInteger
    Check "without a key", text.Encriptar("Lisboa"), text.Compactar("Lisboa")
End Sub

Sub Locale()
    Dim point
    point = Mid(1.5, 2, 1)
    Check "no fraction", text.SoNumeros("1" & point), False
    Check "fraction", text.SoNumeros("1" & point & "5", , True), True
    Check "all digits", text.StrPontoDecimal(CCur("123456789012" & point & "3456")), _
        "123456789012.3456"
End Sub

Sub Errors()
    Dim given, found
    given = Array("kept")
    On Error Resume Next
    text.SeparaPorChar String(40000, "a"), "a", given
    found = Err.Number
    Err.Clear
    Check "too many parts", found & given(0), "6kept"
End Sub

Sub Check(what, given, wanted)
    If given <> wanted Then Fail what & ": '" & given & "', not '" & wanted & "'"
End Sub

' Ends the program: an error raised here would be lost where errors are passed over.
Sub Fail(why)
    WScript.Echo "text.vbs: " & why
    WScript.Quit 1
End Sub
