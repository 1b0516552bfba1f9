' Lists that come back in the caller's variable, declared types, and the errors a script catches.
Option Explicit

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

xml = serializer.Serialize(item, "Item", list)
Check "an article", xml, "<Item code=""12"" active=""False""><Created>15-11-2026</Created><Sold/></Item>"
Check "the list in a variable without a value", list, item.SerializableProperties
xml = "<Item code=""7""><Created>16-11-2026</Created></Item>"
Check "reading", serializer.DeSerialize(item, xml, "@code,/Created"), False
Check "what was read", item.Code & " " & item.Created, "7 16-11-2026"

On Error Resume Next
xml = "kept"
xml = serializer.Serialize(item, "Item", "@Code,@Price")
Check "a missing member's error", Err.Number & xml, "438kept"
WScript.Echo "serializer.vbs: passed"

Sub Check(what, given, wanted)
    If given = wanted Then Exit Sub
    WScript.Echo "serializer.vbs: " & what & " is '" & given & "', not '" & wanted & "'"
    WScript.Quit 1
End Sub
