' What a VBScript program finds in Err after each kind of failure.
Option Explicit

Const NotImplemented = &H80004001
Const Library = "VelaUtil10"

On Error Resume Next
Main
If Err.Number <> 0 Then
    WScript.Echo "errors.vbs: " & Err.Number & " " & Err.Description
    WScript.Quit 1
End If
WScript.Echo "errors.vbs: passed"

Sub Main()
    OfACollection
    OfArguments
    OfWhatIsNotBuilt
    OfSuppressingMembers
    OfItems
End Sub

Sub OfACollection()
    Dim letters, value
    Set letters = CreateObject("VelaUtil10.Collection")
    letters.Add "a", "a"
    On Error Resume Next
    letters.Add "again", "A"
    ExpectError "a key twice", 457, Library, _
        "This key is already associated with an element of this collection"
    value = letters("z")
    ExpectError "an unknown key", 5, Library, "Invalid procedure call or argument"
    value = letters("1")
    ExpectError "a number as text is a key", 5, Library, "Invalid procedure call or argument"
    value = letters(2)
    ExpectError "behind the last", 9, Library, "Subscript out of range"
    value = letters(0)
    ExpectError "before the first", 9, Library, "Subscript out of range"
    letters.Remove -1
    ExpectError "removing before the first", 9, Library, "Subscript out of range"
    letters.Add "b", "b", 1, 1
    ExpectError "before and after", 5, Library, "Invalid procedure call or argument"
    letters.Add "b", 1
    ExpectError "a number as key", 13, Library, "Type mismatch"
    value = letters(Array(1))
    ExpectNumber "an array as place", 13
    Check "count after all that", letters.Count, 1
End Sub

Sub OfArguments()
    Dim text, values
    Set text = CreateObject("VelaUtil10.TextUtil")
    Set values = CreateObject("VelaUtil10.Preferences").MyPreferences.Values
    On Error Resume Next
    text.UTrim
    ExpectFailure "an argument too few"
    text.UTrim "a", "b"
    ExpectFailure "an argument too many"
    text.UTrim Array(1)
    ExpectNumber "an array as text", 13
    text.UTrim CreateObject("VelaUtil10.Collection")
    ExpectFailure "an object as text"
    text.NoSuchMember
    ExpectNumber "no such member", 438
    text.UTrim = "a"
    ExpectFailure "assigning to a method"
    values = CreateObject("VelaUtil10.MyUtil").MySys.ErroDeRede("none")
    ExpectNumber "text as number", 13
    values = CreateObject("VelaUtil10.MyUtil").MySys.ErroDeRede(40000)
    ExpectNumber "a number too large", 6
End Sub

Sub OfWhatIsNotBuilt()
    Dim text, found
    Set text = CreateObject("VelaUtil10.TextUtil")
    On Error Resume Next
    found = text.SemEspacos("a b")
    ExpectError "a member", NotImplemented, Library, _
        "This member is not available in this version"
    Set found = CreateObject("VelaUtil10.MyUtil").MyMath
    ExpectError "an accessor", NotImplemented, Library, _
        "This member is not available in this version"
    Set found = CreateObject("VelaUtil10.MathUtil")
    ExpectFailure "a class that is declared only"
    Set found = CreateObject("VelaUtil10.UPManager")
    ExpectFailure "a class that is not creatable"
End Sub

Sub OfSuppressingMembers()
    Dim preferences, system, window
    Set preferences = CreateObject("VelaUtil10.Preferences").MyPreferences.NewPreferences()
    Set system = CreateObject("VelaUtil10.MyUtil").MySys
    Set window = Nothing
    On Error Resume Next
    preferences.Values.SaveValue "a", "b", "c"
    preferences.Windows.SaveWindowPos window
    preferences.Windows.SaveWindowPos system
    Check "value before start", preferences.Values.GetValue("a", "b", "default"), ""
    Check "position before start", preferences.Windows.LoadWindowPos(window), False
    Check "copies before start", preferences.Printers.GetCopies(1, "x"), 0
    Check "unknown section", preferences.ActiveUPM.PreferenceSections("XX") Is Nothing, True
    Check "section out of range", preferences.ActiveUPM.PreferenceSections(99) Is Nothing, True
    preferences.ActiveUPM.PreferenceSections.Remove "XX"
    Check "deleting", preferences.ActiveUPM.Delete("nobody"), False
    Check "error left behind", Err.Number & Err.Description, "0"
End Sub

' An identity that is not stored as it is looked up: the collection's own error comes through.
Sub OfItems()
    Dim preferences, items, item
    Set preferences = CreateObject("VelaUtil10.Preferences").MyPreferences.NewPreferences()
    preferences.ActiveDataSources.LocalSource = ""
    preferences.ActiveDataSources.SharedSource = ""
    preferences.StartUPM
    Set items = preferences.ActiveUPM.PreferenceSections("DP").Items
    items.Add CreateObject("VelaUtil10.DPItem"), "a ", "g"
    On Error Resume Next
    items.Add CreateObject("VelaUtil10.DPItem"), "a ", "g"
    ExpectNumber "a blank in an identity", 457
    items.Add CreateObject("VelaUtil10.TextUtil")
    ExpectFailure "no item"
    items.Remove "none", "g"
    Set item = items.Item("none", "g")
    Check "missing item", item Is Nothing, True
    Check "error left behind", Err.Number, 0
    Check "count", items.Count, 1
End Sub

Sub ExpectError(what, number, source, description)
    If Err.Source <> source Then Complain what, "source " & Err.Source
    If Err.Description <> description Then Complain what, "description " & Err.Description
    ExpectNumber what, number
End Sub

Sub ExpectNumber(what, number)
    If Err.Number <> number Then Complain what, "number " & Err.Number
    Err.Clear
End Sub

Sub ExpectFailure(what)
    If Err.Number = 0 Then Complain what, "no error"
    Err.Clear
End Sub

Sub Check(what, given, wanted)
    If given <> wanted Then Complain what, given
End Sub

' Ends the program: an error raised here would be lost where errors are passed over.
Sub Complain(what, found)
    WScript.Echo "errors.vbs: " & what & " gave " & found & " (error " & Err.Number & ")"
    WScript.Quit 1
End Sub
