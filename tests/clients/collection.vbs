' Collection as VBScript programs use it: places, keys, enumeration, and the members that take any
' collection.
Option Explicit

On Error Resume Next
Main
If Err.Number <> 0 Then
    WScript.Echo "collection.vbs: " & Err.Number & " " & Err.Description
    WScript.Quit 1
End If
WScript.Echo "collection.vbs: passed"

Sub Main()
    PlacesAndKeys
    EntriesOfEveryKind
    ChangesWhileEnumerating
    SizesOfThousands
    CollectionsOfOthers
End Sub

Sub PlacesAndKeys()
    Dim letters, place
    Set letters = CreateObject("VelaUtil10.Collection")
    Check "new", letters.Count, 0
    letters.Add "b", "Key B"
    letters.Add "d"
    letters.Add "a", , 1
    letters.Add "c", "key c", , "KEY b"
    letters.Add "e", "", , 4
    Check "order", Joined(letters), "abcde"
    Check "first", letters(1), "a"
    Check "by key", letters("kEY c"), "c"
    Check "by the empty key", letters.Item(""), "e"
    letters.Remove "Key B"
    letters.Remove 1
    Check "after removal", Joined(letters), "cde"
    place = 2
    Check "place in a variable", letters(place), "d"
    letters.Add "b again", "key b", "key c"
    Check "a key used again", Joined(letters), "b againcde"
End Sub

Sub EntriesOfEveryKind()
    Dim mixed, inner
    Set mixed = CreateObject("VelaUtil10.Collection")
    Set inner = CreateObject("VelaUtil10.Collection")
    inner.Add 1, "one"
    mixed.Add inner, "inner"
    mixed.Add Array(1, 2, 3), "array"
    mixed.Add Empty, "empty"
    mixed.Add Null, "null"
    mixed.Add Nothing, "nothing"
    mixed.Add 2.5, "number"
    Check "the same object", mixed("inner") Is inner, True
    Check "an entry's entry", mixed("inner")("one"), 1
    Check "an array", UBound(mixed("array")), 2
    Check "empty", IsEmpty(mixed("empty")), True
    Check "null", IsNull(mixed("null")), True
    Check "nothing", mixed("nothing") Is Nothing, True
    Check "a number", mixed("number"), 2.5
End Sub

Sub ChangesWhileEnumerating()
    Dim letters, letter, seen
    Set letters = Filled("a", "f")
    seen = ""
    For Each letter In letters
        seen = seen & letter
        If letter = "b" Then letters.Remove "b"
        If letter = "c" Then letters.Remove "d"
        If letter = "e" Then letters.Add "x", "x"
    Next
    Check "removed and added meanwhile", seen, "abcefx"

    seen = ""
    For Each letter In Filled("a", "c")
        seen = seen & letter
    Next
    Check "held by its enumerator alone", seen, "abc"
End Sub

Sub SizesOfThousands()
    Dim many, i
    Set many = CreateObject("VelaUtil10.Collection")
    For i = 1 To 40000
        many.Add i, "k" & i
    Next
    Check "a count beyond 16 bits", many.Count, 40000
    Check "the last", many("K40000"), 40000
    Check "the middle", many(20000), 20000
End Sub

Sub CollectionsOfOthers()
    Dim system, letters, dictionary
    Set system = CreateObject("VelaUtil10.MyUtil").MySys
    Set letters = Filled("a", "c")
    Set dictionary = CreateObject("Scripting.Dictionary")
    dictionary.Add "a", 1
    Check "has", system.ExisteNaCollection(letters, "B"), True
    Check "has not", system.ExisteNaCollection(letters, "z"), False
    Check "a dictionary has", system.ExisteNaCollection(dictionary, "a"), True
    Check "a dictionary has not", system.ExisteNaCollection(dictionary, "b"), False
    Check "and does not get it by asking", dictionary.Count, 1
    system.ClearCollection letters
    Check "emptied", letters.Count, 0
    system.ClearCollection dictionary, False
    Check "an emptied dictionary", dictionary.Count, 0
    system.ClearCollection letters, True
    Check "let go of", letters Is Nothing, True
    Check "nothing has nothing", system.ExisteNaCollection(letters, "a"), False
End Sub

' A collection of the letters from one to another, each its own key.
Function Filled(first, last)
    Dim code
    Set Filled = CreateObject("VelaUtil10.Collection")
    For code = Asc(first) To Asc(last)
        Filled.Add Chr(code), Chr(code)
    Next
End Function

Function Joined(values)
    Dim value
    For Each value In values
        Joined = Joined & value
    Next
End Function

Sub Check(what, given, wanted)
    If given <> wanted Then Err.Raise 17, "check", what & ": " & given & ", not " & wanted
End Sub
