' What a script makes of a text and gets back: compressed, hidden behind a key, and in base64.
Option Explicit

On Error Resume Next
Main
If Err.Number <> 0 Then Fail Err.Number & " " & Err.Description
WScript.Echo "transforms.vbs: passed"

Sub Main()
    Dim util, text, hidden, key
    Set util = CreateObject("VelaUtil10.MyUtil").MyText
    text = String(200, "-") & Chr(231) & Chr(128) & vbCrLf & Chr(0)
    Check "compressed", Len(util.Compactar(text)) < 60, True
    Check "and back", util.Descompactar(util.Compactar(text)), text
    Check "nothing", util.Compactar("") & util.Descompactar(Empty), ""

    key = 1234
    hidden = util.Encriptar(text, key)
    Check "by the key as text", util.Desencriptar(hidden, "1234"), text
    Check "by another key", util.Desencriptar(hidden, "4321") <> text, True
    Check "the key's variable", VarType(key), vbInteger
    Check "without a key", util.Encriptar(text), util.Compactar(text)

    Check "base64", util.CodificarStr64("ab" & Chr(231)), "YWLn"
    Check "both", util.Descompactar64(util.Compactar64(text)), text
End Sub

Sub Check(what, given, wanted)
    If given <> wanted Then Fail what & ": '" & given & "', not '" & wanted & "'"
End Sub

' Ends the program: an error raised here would be lost where errors are passed over.
Sub Fail(why)
    WScript.Echo "transforms.vbs: " & why
    WScript.Quit 1
End Sub
