' A program that saves values and forgets to stop the preferences. Arguments: the folder of its
' documents, and how it ends: "last line", "error" or "holding on".
Option Explicit

Dim preferences, own, folder, kept
folder = WScript.Arguments(0)
Set preferences = CreateObject("VelaUtil10.Preferences").MyPreferences
UseDocuments preferences, "shared"
preferences.Values.SaveValue "ending", "general", WScript.Arguments(1)

Set own = preferences.NewPreferences()
UseDocuments own, "own"
own.Values.SaveValue "ending", "general", WScript.Arguments(1)

Select Case WScript.Arguments(1)
    Case "error"
        Err.Raise 17
    Case "holding on"
        ' A circle of references, which nobody ever lets go of.
        Set kept = CreateObject("VelaUtil10.Collection")
        kept.Add kept
        kept.Add preferences
        kept.Add own
    Case Else
        Set preferences = Nothing
End Select

Sub UseDocuments(preferences, name)
    preferences.ActiveDataSources.LocalSource = folder & "\" & name & ".up1.xml"
    preferences.ActiveDataSources.SharedSource = folder & "\" & name & ".up2.xml"
    preferences.StartUPM "sales", "ana"
End Sub
