' Switches as a script meets them: walking, looking up, records of its own.
Option Explicit

Dim switches
Set switches = CreateObject("VelaUtil10.Switches")
On Error Resume Next
Main
If Err.Number <> 0 Then Check "error", Err.Number & " " & Err.Description, ""
WScript.Echo "switches.vbs: passed"

Sub Main()
    Dim index, record
    switches.FromString "prog /user=ana /log / out=a=b"
    Check "by pattern", Listing(switches.FindByRef(" [!a-n]* ")), "1:user=ana 3:out=a=b "
    For Each index In Array(2, 2.0, CByte(2), CCur(2), "LOG", switches("log"))
        Check TypeName(index), switches.Item(index) Is switches(2), True
    Next
    For Each index In Array(0, "2", Null, Empty, Array(1), switches)
        Check TypeName(index), switches(index) Is Nothing, True
        switches.Remove index
    Next
    Check "all", Listing(switches), "1:user=ana 2:log= 3:out=a=b "

    Set record = CreateObject("VelaUtil10.KeyValue")
    Check "empty", record.Key & record.Ref & record.StrValue & record.Group & record.LngValue, "0"
    record.Key = "mine"
    record.Group = "Own"
    Set record.ObjValue = switches
    switches.Add record
    record.LngValue = 70000
    Check "shared", switches.FindByGroup("own")("MINE").LngValue, 70000
    Check "its object", switches("mine").ObjValue("mine") Is record, True
    Set record.ObjValue = Nothing
    switches.Remove record
    Check "removed", switches("mine") Is Nothing, True
End Sub

Function Listing(records)
    Dim record
    For Each record In records
        Listing = Listing & record.LngValue & ":" & record.Ref & "=" & record.StrValue & " "
    Next
End Function

Sub Check(what, given, wanted)
    If given = wanted Then Exit Sub
    WScript.Echo "switches.vbs: " & what & ": '" & given & "', not '" & wanted & "'"
    WScript.Quit 1
End Sub
