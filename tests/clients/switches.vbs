' Switches as a script meets them: reading, walking, looking up, patterns, records of its own, errors.
Option Explicit

Dim switches
Set switches = CreateObject("VelaUtil10.Switches")
On Error Resume Next
Main
If Err.Number <> 0 Then Fail Err.Number & " " & Err.Description
WScript.Echo "switches.vbs: passed"

Sub Main()
    switches.FromString "prog /user=ana /log / out=a=b"
    Check "all", Listing(switches), "1:user=ana 2:log= 3:out=a=b "
    Check "by pattern", Listing(switches.FindByRef(" [!a-n]* ")), "1:user=ana 3:out=a=b "
    LookUp
    OwnRecords
    Errors
    switches.Clear
    Check "cleared", switches.Count & Listing(switches), "0"
End Sub

Sub LookUp()
    Dim index
    For Each index In Array(2, 2.0, CByte(2), CCur(2), "LOG", switches("log"))
        Check TypeName(index), switches.Item(index) Is switches(2), True
    Next
    For Each index In Array(0, 5, "2", "", Null, Empty, Array(1), switches)
        Check TypeName(index), switches(index) Is Nothing, True
        switches.Remove index
    Next
    index = 1
    switches.Remove index
    Check "removed", Listing(switches), "2:log= 3:out=a=b "
End Sub

Sub OwnRecords()
    Dim record
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

Sub Errors()
    Const Taken = "This key is already associated with an element of this collection"
    On Error Resume Next
    switches.Add switches("log")
    Expect 457, Taken
    switches.FromString "/new /NEW /never"
    Expect 457, Taken
    switches.Add Nothing
    Expect 13, "Type mismatch"
    switches.FindByRef "[a"
    Expect 93, "Invalid pattern string"
    switches.Add switches
    Check "no record", Err.Number, 13
    Err.Clear
    Check "after all that", Listing(switches), "2:log= 3:out=a=b 1:new= "
End Sub

Function Listing(records)
    Dim record
    For Each record In records
        Listing = Listing & record.LngValue & ":" & record.Ref & "=" & record.StrValue & " "
    Next
End Function

Sub Expect(number, description)
    Dim found
    found = Err.Number & " " & Err.Source & " " & Err.Description
    Err.Clear
    Check "error", found, number & " VelaUtil10 " & description
End Sub

Sub Check(what, given, wanted)
    If given <> wanted Then Fail what & ": '" & given & "', not '" & wanted & "'"
End Sub

' Ends the program: an error raised here would be lost where errors are passed over.
Sub Fail(why)
    WScript.Echo "switches.vbs: " & why
    WScript.Quit 1
End Sub
