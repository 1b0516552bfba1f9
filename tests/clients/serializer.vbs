' Lists that come back in the caller's variable, declared types, and the errors a script catches.
Option Explicit

Dim failure
failure = ""

Sub Check(what, given, wanted)
    If failure = "" And given <> wanted Then failure = what & " is '" & given & "', not '" & wanted & "'"
End Sub

Class Article
    Public Code
    Public Created
    Public Sold
    Public Active
    Public SerializableProperties
    Public Property Get Broken()
        Err.Raise 1000, "Article", "broken"
    End Property
End Class

Dim serializer, item, list, xml
Set serializer = CreateObject("VelaUtil10.Serializer")
Set item = New Article
item.Code = 12
item.Created = DateSerial(2026, 11, 15)
item.Sold = CDate(0)
item.Active = False
item.SerializableProperties = "@Code,/Created,/Sold,/Broken,@Active"

Check "a given list", serializer.Serialize(item, "Item", "@Code"), "<Item code=""12""/>"
list = ""
xml = serializer.Serialize(item, "Item", list)
Check "an article", xml, "<Item code=""12"" active=""False""><Created>15-11-2026</Created><Sold/></Item>"
Check "the list", list, item.SerializableProperties

Dim unset
xml = serializer.Serialize(item, "Item", unset)
Check "the list in a variable without a value", unset, item.SerializableProperties

item.SerializableProperties = "/Code,/Created"
list = Empty
Check "reading", serializer.DeSerialize(item, "<Item><Created>16-11-2026</Created><Code>7</Code></Item>", list), False
Check "what was read", item.Code & " " & item.Created, "7 16-11-2026"
Check "the list on reading", list, "/Code,/Created"

On Error Resume Next
xml = "kept"
xml = serializer.Serialize(item, "Item", "@Code,@Price")
Check "a missing member's error", Err.Number, 438
Check "what is left", xml, "kept"
Err.Clear
xml = serializer.Serialize(Nothing, "Item", "@Code")
Check "the error of nothing", Err.Number, 91
Err.Clear
On Error GoTo 0

If failure = "" Then
    WScript.Echo "serializer.vbs: passed"
Else
    WScript.Echo "serializer.vbs: " & failure
    WScript.Quit 1
End If
