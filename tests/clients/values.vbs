' What VBScript hands to the library and gets back: entries and keys, variables by reference,
' errors, and preferences from one run to the next.
Option Explicit

Dim files, folder
Set files = CreateObject("Scripting.FileSystemObject")
folder = files.BuildPath(files.GetSpecialFolder(2).Path, files.GetTempName())
files.CreateFolder folder
On Error Resume Next
Main
If Err.Number <> 0 Then Fail Err.Number & " " & Err.Description
files.DeleteFolder folder, True
WScript.Echo "values.vbs: passed"

Sub Main()
    Entries
    ChangesWhileEnumerating
    VariablesByReference
    OmittedArguments
    Errors
    SuppressedErrors
    Preferences
End Sub

Sub Entries()
    Dim mixed, inner, place
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
End Sub

Sub ChangesWhileEnumerating()
    Dim letters, letter, seen
    Set letters = Filled("a", "f")
    For Each letter In letters
        seen = seen & letter
        If letter = "b" Then letters.Remove "b"
        If letter = "c" Then letters.Remove "d"
        If letter = "e" Then letters.Add "x"
    Next
    For Each letter In Filled("g", "h")
        seen = seen & letter
    Next
    Check "seen", seen, "abcefxgh"
End Sub

Sub VariablesByReference()
    Dim text, value, parts(1), letters, kept
    Set text = CreateObject("VelaUtil10.MyUtil").MyText
    value = "Concei" & Chr(231) & Chr(227) & "o"
    text.SubstituirAcentos value
    Check "accents", value, "Conceicao"
    text.MudaChar (value), "o", "x"
    Check "in parentheses a copy is changed", value, "Conceicao"
    value = 1234
    text.MudaChar value, "x", "y"
    Check "what does not change keeps its type", VarType(value), vbInteger
    text.MudaChar value, "3", "-"
    Check "a number that becomes text", value, "12-4"
    parts(1) = "a b"
    text.MudaChar parts(1), " ", "_"
    Check "an array's element", parts(1), "a_b"
    text.MudaChar "a literal", "a", "b"
    Check "a template", text.PreparaTextoComVars("@X1 and @X2", Array("a", 2)), "a and 2"

    Set letters = Filled("a", "b")
    Set kept = letters
    CreateObject("VelaUtil10.MyUtil").MySys.ClearCollection letters, True
    Check "an object set to nothing", letters Is Nothing, True
    Check "and emptied", kept.Count, 0
End Sub

Sub OmittedArguments()
    Dim preferences, values, path, file, extension
    Set preferences = CreateObject("VelaUtil10.Preferences").MyPreferences.NewPreferences()
    preferences.ActiveDataSources.LocalSource = ""
    preferences.ActiveDataSources.SharedSource = ""
    preferences.StartUPM
    Set values = preferences.Values
    values.SaveDefaultPath "invoices", "export", "C:\Data\", , "csv"
    file = "old"
    Check "found", values.LoadDefaultPath("invoices", "export", path, , extension), True
    Check "not found", values.LoadDefaultPath("none", "export", path, file, extension), False
    Check "its parts", path & "|" & file & "|" & extension, "C:\Data\|old|csv"
End Sub

Sub Errors()
    Const Library = "VelaUtil10: "
    Const NotBuilt = "VelaUtil10: This member is not available in this version"
    Dim letters, text, value
    Set letters = Filled("a", "a")
    Set text = CreateObject("VelaUtil10.TextUtil")
    On Error Resume Next
    letters.Add "again", "A"
    Expect "a key twice", 457, _
        Library & "This key is already associated with an element of this collection"
    value = letters("1")
    Expect "a number as text is a key", 5, Library & "Invalid procedure call or argument"
    value = letters(2)
    Expect "behind the last", 9, Library & "Subscript out of range"
    value = letters(Array(1))
    Expect "an array as place", 13, ""
    text.UTrim Array(1)
    Expect "an array as text", 13, ""
    text.UTrim
    Expect "an argument too few", "", ""
    text.UTrim "a", "b"
    Expect "an argument too many", "", ""
    text.NoSuchMember
    Expect "no such member", 438, ""
    text.UTrim = "a"
    Expect "assigning to a method", "", ""
    value = CreateObject("VelaUtil10.FileUtil").UnRAR("a.rar")
    Expect "a member that is not built", &H80004001, NotBuilt
    Set value = CreateObject("VelaUtil10.MyUtil").MySecurity
    Expect "an accessor that is not built", &H80004001, NotBuilt
    Set value = CreateObject("VelaUtil10.SecurityUtil")
    Expect "a class that is not built", "", ""
    Set value = CreateObject("VelaUtil10.UPManager")
    Expect "a class that is not creatable", "", ""
    Check "after all that", letters.Count, 1
End Sub

Sub SuppressedErrors()
    Dim preferences
    Set preferences = CreateObject("VelaUtil10.Preferences").MyPreferences.NewPreferences()
    On Error Resume Next
    preferences.Values.SaveValue "a", "b", "c"
    preferences.Windows.SaveWindowPos Nothing
    preferences.Windows.SaveWindowPos CreateObject("VelaUtil10.TextUtil")
    Check "before the start", preferences.Values.GetValue("a", "b", "default"), ""
    Check "position", preferences.Windows.LoadWindowPos(Nothing), False
    Check "unknown section", preferences.ActiveUPM.PreferenceSections("XX") Is Nothing, True
    Check "deleting", preferences.ActiveUPM.Delete("nobody"), False
    Check "error left behind", Err.Number & Err.Description, "0"
End Sub

Sub Preferences()
    Dim named, first, again, i
    named = Array("plain", "seven", "marks", "<a href='x'>""&amp;""</a>", "accents", _
        Chr(199) & Chr(227) & "o " & Chr(128), "a key, with: marks!", "1" & vbCrLf & "2")
    Set first = CreateObject("VelaUtil10.Preferences").MyPreferences
    Start first, "sales", "ana"
    For i = 0 To UBound(named) Step 2
        first.Values.SaveValue named(i), "general", named(i + 1)
    Next
    Start first, "sales", "rui"
    Check "another user's", first.Values.GetValue("plain", "general", "none"), "none"
    first.StopUPM
    Set again = first.NewPreferences()
    Start again, "SALES", "Ana"
    For i = 0 To UBound(named) Step 2
        Check named(i), again.Values.GetValue(UCase(named(i)), " General "), named(i + 1)
    Next
    again.StopUPM
End Sub

Sub Start(preferences, application, user)
    preferences.ActiveDataSources.LocalSource = files.BuildPath(folder, "my.up1.xml")
    preferences.ActiveDataSources.SharedSource = files.BuildPath(folder, "my.up2.xml")
    Check "StartUPM", preferences.StartUPM(application, user), -1
End Sub

' A collection of the letters from one to another, each its own key.
Function Filled(first, last)
    Dim code
    Set Filled = CreateObject("VelaUtil10.Collection")
    For code = Asc(first) To Asc(last)
        Filled.Add Chr(code), Chr(code)
    Next
End Function

' The current error; any number, or any source and description, where "" is wanted.
Sub Expect(what, number, wanted)
    Dim found
    found = Err.Source & ": " & Err.Description
    If Err.Number = 0 Or (number <> "" And Err.Number <> number) Then Fail what & ": " & Err.Number
    If wanted <> "" And found <> wanted Then Fail what & ": " & found
    Err.Clear
End Sub

Sub Check(what, given, wanted)
    If given <> wanted Then Fail what & ": '" & given & "', not '" & wanted & "'"
End Sub

' Ends the program: an error raised here would be lost where errors are passed over.
Sub Fail(why)
    WScript.Echo "values.vbs: " & why
    files.DeleteFolder folder, True
    WScript.Quit 1
End Sub
