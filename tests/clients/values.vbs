' A user's values and paths: saved, stopped, and read back by preferences that start afresh.
Option Explicit

Dim files, folder, named
Set files = CreateObject("Scripting.FileSystemObject")
folder = files.BuildPath(files.GetSpecialFolder(2).Path, files.GetTempName())
' Names and values in turn.
named = Array("plain", "seven", "empty", "", "marks", "<a href='x'>""&amp;""</a>", _
    "blanks", "  two  and two  ", "accents", Chr(199) & Chr(227) & "o " & Chr(128), _
    "long", String(10000, "x"), "a key, with: marks!", "1", "lines", "one" & vbCrLf & "two")
files.CreateFolder folder
On Error Resume Next
Main
Report
WScript.Echo "values.vbs: passed"

Sub Main()
    Dim preferences, again
    Set preferences = CreateObject("VelaUtil10.Preferences").MyPreferences
    Start preferences, "sales", "ana"
    SaveAll preferences
    ValuesAreAsSaved preferences
    PathsAreAsSaved preferences
    preferences.StopUPM

    Set again = preferences.NewPreferences()
    Start again, "SALES", "Ana"
    ValuesAreAsSaved again
    PathsAreAsSaved again
    OthersAreKept again
    LastItemTakesItsSectionAlong preferences
    UnreadableDocumentIsKeptBeside preferences
End Sub

Sub SaveAll(preferences)
    Dim i
    For i = 0 To UBound(named) Step 2
        preferences.Values.SaveValue named(i), "general", named(i + 1)
    Next
    preferences.Values.SaveDefaultPath "invoices", "export", "C:\Data\", "list", "csv"
    preferences.Values.SaveDefaultPath "folder only", "export", "D:\"
End Sub

Sub ValuesAreAsSaved(preferences)
    Dim i
    For i = 0 To UBound(named) Step 2
        Check "value of " & named(i), _
            preferences.Values.GetValue(UCase(named(i)), " General ", "none"), named(i + 1)
    Next
    Check "default", preferences.Values.GetValue("no such", "general", "x"), "x"
    Check "omitted default", preferences.Values.GetValue("no such", "general"), ""
    Check "other group", preferences.Values.GetValue("plain", "special", "x"), "x"
End Sub

Sub PathsAreAsSaved(preferences)
    Dim path, file, extension
    path = "unchanged"
    Check "no path", preferences.Values.LoadDefaultPath("no such", "export", path), False
    Check "path without one kept", path, "unchanged"
    Check "path", _
        preferences.Values.LoadDefaultPath("INVOICES", "Export", path, file, extension), True
    Check "its parts", path & "|" & file & "|" & extension, "C:\Data\|list|csv"
    Check "folder only", _
        preferences.Values.LoadDefaultPath("folder only", "export", path, file, extension), True
    Check "its parts", path & "|" & file & "|" & extension, "D:\||"
End Sub

Sub OthersAreKept(preferences)
    preferences.StartUPM "sales", "rui"
    Check "another user's value", preferences.Values.GetValue("plain", "general", "none"), "none"
    preferences.Values.SaveValue "plain", "general", "of rui"
    preferences.StartUPM "stock", "ana"
    Check "another application's value", _
        preferences.Values.GetValue("plain", "general", "none"), "none"
    preferences.Values.SaveValue "plain", "general", "of stock"
    preferences.StartUPM "sales", "ana"
    Check "first again", preferences.Values.GetValue("plain", "general"), "seven"
    preferences.StartUPM "sales", "rui"
    Check "the other user", preferences.Values.GetValue("plain", "general"), "of rui"
    preferences.StartUPM "stock", "ana"
    Check "the other application", preferences.Values.GetValue("plain", "general"), "of stock"
    preferences.StopUPM
End Sub

Sub LastItemTakesItsSectionAlong(preferences)
    Dim fresh
    Set fresh = preferences.NewPreferences()
    Start fresh, "stock", "ana"
    fresh.ActiveUPM.PreferenceSections("KV").Items.Remove "plain", "general"
    fresh.StopUPM
    Check "emptied section is written", InStr(TextOf("my.up2.xml"), "of stock"), 0
    Check "others are still there", InStr(TextOf("my.up2.xml"), "of rui") > 0, True
End Sub

Sub UnreadableDocumentIsKeptBeside(preferences)
    Dim fresh, stream
    Set stream = files.CreateTextFile(files.BuildPath(folder, "other.up2.xml"))
    stream.Write "<UserPreferences><App "
    stream.Close
    Set fresh = preferences.NewPreferences()
    fresh.ActiveDataSources.LocalSource = files.BuildPath(folder, "other.up1.xml")
    fresh.ActiveDataSources.SharedSource = files.BuildPath(folder, "other.up2.xml")
    fresh.StartUPM "sales", "ana"
    fresh.Values.SaveValue "a", "b", "c"
    fresh.StopUPM
    Check "new document", InStr(TextOf("other.up2.xml"), "value=""c""") > 0, True
    Check "old document", TextOf("other.up2.xml.bad"), "<UserPreferences><App "
    Check "local document, of nothing", _
        files.FileExists(files.BuildPath(folder, "other.up1.xml")), False
End Sub

Sub Start(preferences, application, user)
    preferences.ActiveDataSources.LocalSource = files.BuildPath(folder, "my.up1.xml")
    preferences.ActiveDataSources.SharedSource = files.BuildPath(folder, "my.up2.xml")
    Check "StartUPM", preferences.StartUPM(application, user), -1
End Sub

Function TextOf(name)
    Dim stream
    Set stream = files.OpenTextFile(files.BuildPath(folder, name))
    TextOf = stream.ReadAll
    stream.Close
End Function

Sub Check(what, given, wanted)
    If given <> wanted Then Err.Raise 17, "check", what & " is '" & given & "', not '" & wanted & "'"
End Sub

Sub Report()
    Dim number, description
    number = Err.Number
    description = Err.Description
    files.DeleteFolder folder, True
    If number = 0 Then Exit Sub
    WScript.Echo "values.vbs: " & number & " " & description
    WScript.Quit 1
End Sub
