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
    BeforeLoading
    Set preferences = CreateObject("VelaUtil10.Preferences").MyPreferences
    Start preferences
    SaveParameters preferences
    preferences.StopUPM
    Set again = preferences.NewPreferences()
    Start again
    ReadParameters again
    again.StopUPM
    Set again = preferences.NewPreferences()
    Start again
    Check "gone once cleared", Loaded(again).Items.Count, 0
    ParametersInADocumentOfTheirOwn again
    EachUserHasTheirOwn
End Sub

Sub BeforeLoading()
    Dim parameters, number
    Set parameters = CreateObject("VelaUtil10.RPManager")
    Check "nothing yet", parameters.Items.Count, 0
    Check "no item yet", parameters.GetItem("V1@Data@2", "monthly") Is Nothing, True
    Check "no manager", parameters.Load(Nothing), False
    On Error Resume Next
    parameters.AddItem NewParameter("V1", "Data", 2, "")
    number = Err.Number
    On Error GoTo 0
    Check "adding without a manager", number, 5
End Sub

Sub SaveParameters(preferences)
    Dim parameters, item
    Set parameters = Loaded(preferences)
    parameters.AddItem NewParameter("V1", "Data", 2, "01-01-2024")
    parameters.AddItem NewParameter("V1", "Name", 0, "A*")
    parameters.AddItem NewParameter("V1", "Data", 2, "31-12-2024")
    Check "one replaced", parameters.Items.Count, 2
    Set item = parameters.GetItem("v1@data@2", "MONTHLY")
    Check "the newer", item.Value, "31-12-2024"
    Check "its identity", item.Id, "V1@Data@2"
    item.Id = "discarded"
    Check "follows the fields", item.Id & " " & item.SearchKey, "V1@Data@2 V1@Data@2@MONTHLY"
    Check "in a collection", parameters.Items("V1@Name@0@MONTHLY").Value, "A*"
    Check "registered", preferences.ActiveUPM.IsRegistered("RP"), True
End Sub

Sub ReadParameters(preferences)
    Dim parameters, item, listing
    Set parameters = Loaded(preferences)
    For Each item In parameters.Items
        listing = listing & item.View & "/" & item.Field & "/" & item.Mode & "/" & item.Value & ";"
    Next
    Check "read back", listing, "V1/Name/0/A*;V1/Data/2/31-12-2024;"
    parameters.Clear
    Check "cleared", parameters.Items.Count, 0
End Sub

Sub ParametersInADocumentOfTheirOwn(preferences)
    Dim parameters, source
    Set parameters = CreateObject("VelaUtil10.RPManager")
    source = files.BuildPath(folder, "reports.xml")
    Check "Load", parameters.Load(preferences.ActiveUPM, source), True
    parameters.AddItem NewParameter("V2", "Total", -1, "100")
    preferences.StopUPM
    Check "the document", files.FileExists(source), True
    Check "a negative mode", parameters.Items(1).Id, "V2@Total@-1"
End Sub

Sub EachUserHasTheirOwn()
    Dim preferences, parameters
    Set preferences = CreateObject("VelaUtil10.Preferences").MyPreferences.NewPreferences()
    Start preferences
    Set parameters = Loaded(preferences)
    parameters.AddItem NewParameter("V1", "Owner", 1, "ana")
    preferences.StartUPM "sales", "rui"
    Check "of another user", parameters.Items.Count, 0
    parameters.AddItem NewParameter("V1", "Owner", 1, "rui")
    preferences.StopUPM
    Start preferences
    Check "of the first", Loaded(preferences).GetItem("V1@Owner@1", "monthly").Value, "ana"
    preferences.StopUPM
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

Sub Start(preferences)
    preferences.ActiveDataSources.LocalSource = files.BuildPath(folder, "my.up1.xml")
    preferences.ActiveDataSources.SharedSource = files.BuildPath(folder, "my.up2.xml")
    preferences.StartUPM "sales", "ana"
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
