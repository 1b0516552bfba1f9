' What VBScript hands to the library and gets back: entries and keys, variables by reference, omitted
' arguments and errors.
Option Explicit

Dim util
Set util = CreateObject("VelaUtil10.MyUtil")
On Error Resume Next
Main
If Err.Number <> 0 Then Fail Err.Number & " " & Err.Description
WScript.Echo "values.vbs: passed"

Sub Main()
    Entries
    VariablesByReference
    Arrays
    OmittedArguments
    Errors
End Sub

Sub Entries()
    Dim mixed, inner, place, record
    Set inner = Filled("a", "c")
    Set mixed = CreateObject("VelaUtil10.Collection")
    mixed.Add inner, "Inner"
    mixed.Add Array(1, 2, 3), "array"
    mixed.Add Null, "null", , "inner"
    mixed.Add Nothing, "", 1
    place = 1
    Check "nothing", mixed(place) Is Nothing And mixed("") Is Nothing, True
    Check "the same object", mixed("iNNER") Is inner, True
    Check "an entry's entry", mixed(2)("B"), "b"
    Check "null", IsNull(mixed(3)), True
    Check "an array", UBound(mixed("array")), 2
    Set record = CreateObject("VelaUtil10.KeyValue")
    Set record.ObjValue = mixed
    Check "a property set to an object", record.ObjValue Is mixed, True
End Sub

Sub VariablesByReference()
    Dim text, value, parts(1), letters
    Set text = util.MyText
    value = 1234
    text.MudaChar value, "x", "y"
    Check "what does not change keeps its type", VarType(value), vbInteger
    text.MudaChar (value), "3", "-"
    Check "in parentheses a copy is changed", value, 1234
    text.MudaChar value, "3", "-"
    Check "a number that becomes text", value, "12-4"
    parts(1) = "a b"
    text.MudaChar parts(1), " ", "_"
    Check "an array's element", parts(1), "a_b"
    Check "a template", text.PreparaTextoComVars("@X1 and @X2", Array("a", 2)), "a and 2"
    value = CCur("123456789012" & Mid(1.5, 2, 1) & "3456")
    Check "all digits of money", text.StrPontoDecimal(value), "123456789012.3456"
    Set letters = Filled("a", "b")
    util.MySys.ClearCollection letters, True
    Check "an object set to nothing", letters Is Nothing, True
End Sub

Sub Arrays()
    Dim text, dynamic(), fixed(1), given, numbers, which, place
    Set text = util.MyText
    Check "into a dynamic array", text.ParteTexto("one two", dynamic, 3) & dynamic(1), "2two"
    given = Array(1, 2, 3, 4)
    Check "over another", text.SeparaPorChar("x", ";", given) & UBound(given) & given(0), "10x"
    fixed(0) = "b"
    fixed(1) = "a"
    text.OrdenarArrayStr fixed
    Check "sorted", fixed(0) & fixed(1), "ab"
    numbers = Array(20, 3)
    text.ProcuraUmDeVarios 1203, 1, numbers, which, place
    Check "numbers as texts", which & place & VarType(numbers(0)), "12" & vbInteger
End Sub

' And members that suppress errors, before the preferences are started.
Sub OmittedArguments()
    Dim preferences, path, file, extension
    Set preferences = CreateObject("VelaUtil10.Preferences").MyPreferences.NewPreferences()
    preferences.Values.SaveValue "a", "b", "c"
    Check "before the start", preferences.Values.GetValue("a", "b", "default"), ""
    Check "position", preferences.Windows.LoadWindowPos(Nothing), False
    preferences.ActiveDataSources.LocalSource = ""
    preferences.ActiveDataSources.SharedSource = ""
    preferences.StartUPM
    preferences.Values.SaveDefaultPath "invoices", "export", "C:\Data\", , "csv"
    file = "old"
    preferences.Values.LoadDefaultPath "invoices", "export", path, , extension
    Check "by default members", _
        preferences.ActiveUPM.PreferenceSections("DP").Items("invoices", "export").Ext, "csv"
    Check "its parts", path & "|" & file & "|" & extension, "C:\Data\|old|csv"
End Sub

Sub Errors()
    Dim letters, text, value
    Set letters = Filled("a", "a")
    Set text = util.MyText
    On Error Resume Next
    letters.Add "again", "A"
    Check "its text", Err.Source & ": " & Err.Description, _
        "VelaUtil10: This key is already associated with an element of this collection"
    Expect "a key twice", 457
    value = letters(2)
    Expect "behind the last", 9
    text.UTrim Array(1)
    Expect "an array as text", 13
    text.NoSuchMember
    Expect "no such member", 438
    value = Array("kept")
    text.SeparaPorChar String(40000, "a"), "a", value
    Expect "too many parts" & value(0), 6
End Sub

' A collection of the letters from one to another, each its own key.
Function Filled(first, last)
    Dim code
    Set Filled = CreateObject("VelaUtil10.Collection")
    For code = Asc(first) To Asc(last)
        Filled.Add Chr(code), Chr(code)
    Next
End Function

Sub Expect(what, number)
    Check what, Err.Number, number
    Err.Clear
End Sub

Sub Check(what, given, wanted)
    If given <> wanted Then Fail what & ": '" & given & "', not '" & wanted & "'"
End Sub

' Ends the program: an error raised here would be lost where errors are passed over.
Sub Fail(why)
    WScript.Echo "values.vbs: " & why
    WScript.Quit 1
End Sub
