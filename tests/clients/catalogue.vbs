' Every class that callers can create is there, and every accessor hands out its object, but for what
' is still to come.
Option Explicit

On Error Resume Next
Main
If Err.Number <> 0 Then Fail Err.Number & " " & Err.Description
WScript.Echo "catalogue.vbs: passed"

Sub Main()
    Dim name, object
    For Each name In Array("BubbleSort", "Collection", "cTCP", "DatetimeUtil", "DirUtil", "DPItem", _
            "EventHistory", "FileUtil", "GeoUtil", "gUtil", "KeyValue", "KVItem", "MathUtil", _
            "MyUtil", "Notification", "PlayUtil", "PPItem", "Preferences", "Quadrado", _
            "RegistryUtil", "RPItem", "RPManager", "Security", "Serializer", "Switches", _
            "SysUtil", "TextUtil", "TickCount", "UIItem")
        Set object = CreateObject("VelaUtil10." & name)
        Check name, object Is Nothing, False
    Next
    Accessors CreateObject("VelaUtil10.MyUtil")
    StillToCome
End Sub

Sub Accessors(util)
    Dim system
    Set system = util.MySys
    Check "MyMath", util.MyMath.DoisExpX(4), 16
    Check "MyText", util.MyText.SemEspacos("a b"), "ab"
    Check "MyFile", util.MyFile.QualExt("a.txt"), "txt"
    Check "MyDatetime", util.MyDatetime.FmtData, "dd-mm-yyyy"
    Check "Contador", util.MyDatetime.Contador.Horas >= -1, True
    Check "MyRegistry", util.MyRegistry.DeleteValue(&H80000001, "Software\None", "none"), 2
    Check "Directories", system.Directories.TempDirectory <> "", True
    Check "Geo", VarType(system.Geo.GeoISO2), vbString
    Check "Play", system.Play Is Nothing, False
    Check "Notifications", system.Notifications.Count, 6
    Check "EventHistory", system.EventHistory.Count, 0
    Check "Pulsar", system.Pulsar.Index, 0
    Check "MyPreferences", CreateObject("VelaUtil10.Preferences").MyPreferences Is Nothing, False
End Sub

Sub StillToCome()
    Dim name, object
    On Error Resume Next
    For Each name In Array("SecurityUtil", "ExtractionManager", "ExtractionError")
        Set object = CreateObject("VelaUtil10." & name)
        Check name, Err.Number <> 0, True
        Err.Clear
    Next
    Set object = CreateObject("VelaUtil10.MyUtil").MySecurity
    Check "MySecurity", Err.Number, &H80004001
    Err.Clear
    object = CreateObject("VelaUtil10.FileUtil").UnRAR("a.rar")
    Check "UnRAR", Err.Number, &H80004001
    Err.Clear
End Sub

Sub Check(what, given, wanted)
    If given <> wanted Then Fail what & ": '" & given & "', not '" & wanted & "'"
End Sub

' Ends the program: an error raised here would be lost where errors are passed over.
Sub Fail(why)
    WScript.Echo "catalogue.vbs: " & why
    WScript.Quit 1
End Sub
