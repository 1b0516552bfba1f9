' A program that forgets StopUPM finds its values saved after its process ended, by its last
' line, by an error, or still holding on to everything.
Option Explicit

Dim files, folder, shell
Set files = CreateObject("Scripting.FileSystemObject")
Set shell = CreateObject("WScript.Shell")
folder = files.BuildPath(files.GetSpecialFolder(2).Path, files.GetTempName())
files.CreateFolder folder
On Error Resume Next
Main
Report
WScript.Echo "forgotten_stop.vbs: passed"

Sub Main()
    Dim program, ending
    program = files.GetParentFolderName(WScript.ScriptFullName) & "\parts\forgotten_stop.vbs"
    For Each ending In Array("last line", "error", "holding on")
        shell.Run "cscript //nologo """ & program & """ """ & folder & """ """ & ending & """", 0, _
            True
        CheckSaved "shared.up2.xml", ending
        CheckSaved "own.up2.xml", ending
    Next
End Sub

Sub CheckSaved(name, ending)
    Dim stream, text
    Set stream = files.OpenTextFile(files.BuildPath(folder, name))
    text = stream.ReadAll
    stream.Close
    files.DeleteFile files.BuildPath(folder, name), True
    If InStr(text, "value=""" & ending & """") = 0 Then
        Err.Raise 17, "check", name & " has not what a program saved that ended by " & ending
    End If
End Sub

Sub Report()
    Dim number, description
    number = Err.Number
    description = Err.Description
    files.DeleteFolder folder, True
    If number = 0 Then Exit Sub
    WScript.Echo "forgotten_stop.vbs: " & number & " " & description
    WScript.Quit 1
End Sub
