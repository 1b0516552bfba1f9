' A program that forgets StopUPM finds its values saved after its process ended: by its last line, by
' an error, or still holding on to everything. Where WScript.Quit ends the process in the midst of the
' script, as it does in Wine, it finds what had been unsaved for two seconds. Run with a folder, such
' an ending and a time in milliseconds, this script is that program: it saves "early" and, when that
' time has gone by, "late".
Option Explicit

Dim files, folder, preferences, own, kept
Set files = CreateObject("Scripting.FileSystemObject")
If WScript.Arguments.Count = 3 Then
    folder = WScript.Arguments(0)
    Forget WScript.Arguments(1), CLng(WScript.Arguments(2))
Else
    folder = files.BuildPath(files.GetSpecialFolder(2).Path, files.GetTempName())
    files.CreateFolder folder
    CheckEnding "last line", 0, "late"
    CheckEnding "error", 0, "late"
    CheckEnding "holding on", 0, "late"
    CheckEnding "quit", 2500, "early"
    files.DeleteFolder folder, True
    WScript.Echo "forgotten_stop.vbs: passed"
End If

Sub Forget(ending, time)
    files.CreateTextFile(folder & "\begun.txt").Close
    Set preferences = CreateObject("VelaUtil10.Preferences").MyPreferences
    Set own = preferences.NewPreferences()
    Start preferences, "shared"
    Start own, "own"
    SaveValues "early"
    CreateObject("VelaUtil10.SysUtil").Esperar time
    SaveValues "late"
    If ending = "error" Then Err.Raise 17
    If ending = "quit" Then WScript.Quit
    If ending = "holding on" Then
        ' A circle of references, which nobody ever lets go of.
        Set kept = CreateObject("VelaUtil10.Collection")
        kept.Add kept
        kept.Add preferences
        kept.Add own
    End If
    Set preferences = Nothing
End Sub

Sub Start(preferences, name)
    preferences.ActiveDataSources.LocalSource = folder & "\local.xml"
    preferences.ActiveDataSources.SharedSource = folder & "\" & name & ".xml"
    preferences.StartUPM "sales", "ana"
End Sub

Sub SaveValues(value)
    preferences.Values.SaveValue "state", "general", value
    own.Values.SaveValue "state", "general", value
End Sub

Sub CheckEnding(ending, time, leastKept)
    Dim place, name
    place = folder & "\" & ending
    files.CreateFolder place
    CreateObject("WScript.Shell").Run "cscript //nologo """ & WScript.ScriptFullName & """ """ & _
        place & """ """ & ending & """ " & time, 0, True
    For Each name In Array("shared", "own")
        If Not Holds(place & "\" & name & ".xml", leastKept) Then
            WScript.Echo "forgotten_stop.vbs: " & name & ".xml lacks what was saved at " & ending
            files.DeleteFolder folder, True
            WScript.Quit 1
        End If
    Next
End Sub

' "late" is more than "early".
Function Holds(path, leastKept)
    Dim stream, text
    If files.FileExists(path) Then
        Set stream = files.OpenTextFile(path)
        text = stream.ReadAll
        stream.Close
    End If
    Holds = InStr(text, "value=""late""") > 0
    If leastKept = "early" And InStr(text, "value=""early""") > 0 Then Holds = True
End Function
