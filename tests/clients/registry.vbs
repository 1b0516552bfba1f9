' The registry from a script: writing, reading, enumerating and deleting below a key that it makes for
' itself, and the codes for what is not there.
Option Explicit

Const HKCU = -2147483647
Const Key = "Software\VelaUtilTestClient"
Dim registry, shell
Set registry = CreateObject("VelaUtil10.MyUtil").MyRegistry
Set shell = CreateObject("WScript.Shell")
On Error Resume Next
Main
If Err.Number <> 0 Then Fail Err.Number & " " & Err.Description
WScript.Echo "registry.vbs: passed"

Sub Main()
    shell.RegWrite "HKCU\" & Key & "\one\", ""
    shell.RegWrite "HKCU\" & Key & "\two\", ""
    Values
    Keys
    Check "the key itself", registry.DeleteKey(HKCU, "Software", "VelaUtilTestClient"), 0
    Check "and again", registry.DeleteKey(HKCU, "Software", "VelaUtilTestClient"), 2
End Sub

Sub Values()
    Dim content, system
    Set system = CreateObject("VelaUtil10.SysUtil")
    Check "write", registry.SetRegistryValue(HKCU, Key, "printer", "  A" & Chr(231) & "or 2 "), 0
    Check "read", registry.GetRegistryValue(HKCU, Key, "printer", content), 0
    Check "its content", content, "A" & Chr(231) & "or 2"
    Check "missing", registry.GetRegistryValue(HKCU, Key, "none", content), 2
    Check "left alone", content, "A" & Chr(231) & "or 2"
    Check "no key made", registry.SetRegistryValue(HKCU, Key & "\none", "printer", content), 2
    Check "for short", system.RegistryLerValorLocalUser(Key, "printer"), content
    Check "nothing for short", system.RegistryLerValorLocalMachine(Key, "printer"), ""
    Check "another object", CreateObject("VelaUtil10.RegistryUtil").DeleteValue(HKCU, Key, "printer"), 0
    Check "gone", registry.DeleteValue(HKCU, Key, "printer"), 2
End Sub

Sub Keys()
    Dim name, names, code
    code = registry.GetFirstKey(HKCU, Key, name)
    Do While code = 0
        names = names & name & " "
        code = registry.GetNextKey(HKCU, Key, name)
    Loop
    Check "names", names & code, "one two 259"
    Check "has subkeys", registry.DeleteKey(HKCU, "Software", "VelaUtilTestClient"), 5
    Do While registry.GetFirstKey(HKCU, Key, name) = 0
        Check name, registry.DeleteKey(HKCU, Key, name), 0
    Loop
End Sub

Sub Check(what, given, wanted)
    If given <> wanted Then Fail what & ": '" & given & "', not '" & wanted & "'"
End Sub

' Ends the program: an error raised here would be lost where errors are passed over.
Sub Fail(why)
    WScript.Echo "registry.vbs: " & why
    WScript.Quit 1
End Sub
