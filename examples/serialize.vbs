' Keeps an item as text, and makes another one from the text.
Option Explicit

Dim serializer, item, copy, list, xml
Set serializer = CreateObject("VelaUtil10.Serializer")

Set item = CreateObject("VelaUtil10.UIItem")
item.Id = "invoice"
item.Left = 1200
item.Top = 300
item.Tag = "<first> & ""best"""

' @ makes an attribute, / an element. Reading looks for the attributes as they were written, with a
' small first letter: spelled so, one list does for both.
list = "@id,@left,@top,/Tag"
xml = serializer.Serialize(item, "Window", list)
WScript.Echo xml

Set copy = CreateObject("VelaUtil10.UIItem")
serializer.DeSerialize copy, xml, list
WScript.Echo "Restored " & copy.Id & " at " & copy.Left & ", " & copy.Top & ": " & copy.Tag
