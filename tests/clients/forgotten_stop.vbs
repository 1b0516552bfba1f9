' A program that forgets StopUPM finds its values saved after its process ended: by its last line, by
' an error, or still holding on to everything. Run with a folder and such an ending, this script is
' that program.
Option Explicit

Dim files, folder, ending, preferences, own, kept
Set files = CreateObject("Scripting.FileSystemObject")
If WScript.Arguments.Count = 2 Then
    folder = WScript.Arguments(0)
    Forget WScript.Arguments(1)
Else
    folder = files.BuildPath(files.GetSpecialFolder(2).Path, files.GetTempName())
    files.CreateFolder folder
    For Each ending In Array("last line", "error", "holding on")
        CreateObject("WScript.Shell").Run "cscript //nologo """ & WScript.ScriptFullName & """ """ & _
            folder & """ """ & ending & """", 0, True
        CheckSaved folder & "\shared.xml"
        CheckSaved folder & "\own.xml"
    Next
    files.DeleteFolder folder, True
    WScript.Echo "forgotten_stop.vbs: passed"
End If

Sub Forget(ending)
    Set preferences = CreateObject("VelaUtil10.Preferences").MyPreferences
    SaveValue preferences, "shared", ending
    Set own = preferences.NewPreferences()
    SaveValue own, "own", ending
    If ending = "error" Then Err.Raise 17
    If ending = "holding on" Then
        ' A circle of references, which nobody ever lets go of.
        Set kept = CreateObject("VelaUtil10.Collection")
        kept.Add kept
        kept.Add preferences
        kept.Add own
    End If
    Set preferences = Nothing
End Sub

Sub SaveValue(preferences, name, value)
    preferences.ActiveDataSources.LocalSource = folder & "\local.xml"
    preferences.ActiveDataSources.SharedSource = folder & "\" & name & ".xml"
    preferences.StartUPM "sales", "ana"
    preferences.Values.SaveValue "ending", "general", value
End Sub

' Each ending overwrites what the one before it saved.
Sub CheckSaved(path)
    Dim stream, text
    If files.FileExists(path) Then
        Set stream = files.OpenTextFile(path)
        text = stream.ReadAll
        stream.Close
    End If
    If InStr(text, "value=""" & ending & """") > 0 Then Exit Sub
    WScript.Echo "forgotten_stop.vbs: " & path & " lacks what was saved at " & ending
    files.DeleteFolder folder, True
    WScript.Quit 1
End Sub
