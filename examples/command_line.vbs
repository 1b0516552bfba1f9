' Reads this program's own command line, or a sample of one where there is none.
'
'     cscript //nologo command_line.vbs report /user=ana /verbose /copies=2
Option Explicit

Const kSample = "report /user=ana /verbose /copies=2 /out=list.txt /out-form=A4"

Dim switches, switch
Set switches = CreateObject("VelaUtil10.Switches")
On Error Resume Next
Main
If Err.Number <> 0 Then
    WScript.Echo "Stopped by error " & Err.Number & ": " & Err.Description
    WScript.Quit 1
End If

Sub Main()
    Dim line
    line = CommandLine()
    If InStr(line, "/") = 0 Then
        line = kSample
        WScript.Echo "No switches given; reading a sample:"
    End If
    WScript.Echo line
    switches.FromString line

    For Each switch In switches
        WScript.Echo switch.LngValue & ". " & switch.Ref & ValueOf(switch)
    Next
    ' Without a pattern's signs a name stands for itself, in any case.
    WScript.Echo "Verbose: " & (switches.FindByRef("VERBOSE").Count > 0)
    WScript.Echo "About output: " & switches.FindByRef("out*").Count
    WScript.Echo "Read " & switches.Count & " switches."
End Sub

Function CommandLine()
    Dim i
    For i = 0 To WScript.Arguments.Count - 1
        CommandLine = CommandLine & WScript.Arguments(i) & " "
    Next
End Function

Function ValueOf(switch)
    If switch.StrValue <> "" Then ValueOf = " is " & switch.StrValue
End Function
