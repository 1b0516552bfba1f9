' Report parameters: registered with a running manager, saved with it, found by their three fields.
Option Explicit

Dim files, folder
Set files = CreateObject("Scripting.FileSystemObject")
folder = files.BuildPath(files.GetSpecialFolder(2).Path, files.GetTempName())
files.CreateFolder folder
On Error Resume Next
Main
Report
WScript.Echo "rpmanager.vbs: passed"

Sub Main()
    Dim preferences, again
    Set preferences = CreateObject("VelaUtil10.Preferences").MyPreferences
    Start preferences, "ana"
    SaveParameters preferences
    Start preferences, "rui"
    Check "of another user", Loaded(preferences).Items.Count, 0
    preferences.StopUPM
    Set again = preferences.NewPreferences()
    Start again, "ana"
    ReadParameters again
    again.StopUPM
End Sub

Sub SaveParameters(preferences)
    Dim parameters, item
    Check "no manager", CreateObject("VelaUtil10.RPManager").Load(Nothing), False
    Set parameters = Loaded(preferences)
    parameters.AddItem NewParameter("V1", "Data", 2, "01-01-2024")
    parameters.AddItem NewParameter("V1", "Name", -1, "A*")
    parameters.AddItem NewParameter("V1", "Data", 2, "31-12-2024")
    Set item = parameters.GetItem("v1@data@2", "MONTHLY")
    item.Id = "discarded"
    Check "follows the fields", item.Id & " " & item.Value, "V1@Data@2 31-12-2024"
    Check "in a collection", parameters.Items("V1@Name@-1@MONTHLY").Value, "A*"
    Check "registered", preferences.ActiveUPM.IsRegistered("RP"), True
End Sub

Sub ReadParameters(preferences)
    Dim item, listing
    For Each item In Loaded(preferences).Items
        listing = listing & item.View & "/" & item.Field & "/" & item.Mode & "/" & item.Value & ";"
    Next
    Check "read back", listing, "V1/Name/-1/A*;V1/Data/2/31-12-2024;"
End Sub

Function Loaded(preferences)
    Set Loaded = CreateObject("VelaUtil10.RPManager")
    Check "Load", Loaded.Load(preferences.ActiveUPM), True
End Function

Function NewParameter(view, field, mode, value)
    Set NewParameter = CreateObject("VelaUtil10.RPItem")
    NewParameter.View = view
    NewParameter.Field = field
    NewParameter.Mode = mode
    NewParameter.Value = value
    NewParameter.Group = "monthly"
End Function

Sub Start(preferences, user)
    preferences.ActiveDataSources.LocalSource = files.BuildPath(folder, "my.up1.xml")
    preferences.ActiveDataSources.SharedSource = files.BuildPath(folder, "my.up2.xml")
    preferences.StartUPM "sales", user
End Sub

Sub Check(what, given, wanted)
    If given <> wanted Then Err.Raise 17, "check", what & ": '" & given & "', not '" & wanted & "'"
End Sub

Sub Report()
    Dim number, description
    number = Err.Number
    description = Err.Description
    files.DeleteFolder folder, True
    If number = 0 Then Exit Sub
    WScript.Echo "rpmanager.vbs: " & number & " " & description
    WScript.Quit 1
End Sub
