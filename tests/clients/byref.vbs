' Script variables handed to typed by-reference parameters are rewritten in place.
Option Explicit

On Error Resume Next
Main
If Err.Number <> 0 Then
    WScript.Echo "byref.vbs: " & Err.Number & " " & Err.Description
    WScript.Quit 1
End If
WScript.Echo "byref.vbs: passed"


Sub Main()
    Texts
    OptionalTexts
    ObjectsByReference
End Sub

Sub Texts()
    Dim text, value, parts(1)
    Set text = CreateObject("VelaUtil10.MyUtil").MyText
    value = "Concei" & Chr(231) & Chr(227) & "o n" & Chr(186) & " 5"
    text.SubstituirAcentos value
    Check "accents", value, "Conceicao n   "

    value = "aXbXXc"
    text.MudaChar value, "X", "XX"
    Check "replaced", value, "aXXbXXXXc"
    text.MudaChar value, "XX", ""
    Check "removed", value, "abc"
    text.MudaChar (value), "b", "z"
    Check "in parentheses a copy is changed", value, "abc"

    value = 1234
    text.MudaChar value, "3", "-"
    Check "a number becomes text", value, "12-4"
    Check "and its type with it", VarType(value), vbString
    value = 1234
    text.MudaChar value, "x", "y"
    Check "a number that does not change", value, 1234
    Check "keeps its type", VarType(value), vbInteger
    value = Empty
    text.MudaChar value, "x", "y"
    Check "nothing to change", value, ""

    parts(1) = "a b"
    text.MudaChar parts(1), " ", "_"
    Check "an array's element", parts(1), "a_b"
    text.MudaChar "a literal", "a", "b"
    Check "a text by value", text.UTrim("  ab c "), "AB C"
    Check "a template", text.PreparaTextoComVars("@X1 and @X10", _
        Array("a", 2, 3, 4, 5, 6, 7, 8, 9, "j")), "a and j"
End Sub

Sub OptionalTexts()
    Dim preferences, values, path, file, extension
    Set preferences = CreateObject("VelaUtil10.Preferences").MyPreferences.NewPreferences()
    preferences.ActiveDataSources.LocalSource = ""
    preferences.ActiveDataSources.SharedSource = ""
    preferences.StartUPM
    Set values = preferences.Values
    path = "C:\Data\"
    file = "list"
    values.SaveDefaultPath "invoices", "export", path, , "csv"
    values.SaveDefaultPath "orders", "export", path, file
    Check "given by reference and unchanged", path & file, "C:\Data\list"
    path = 0
    Check "left out", values.LoadDefaultPath("invoices", "export", path), True
    Check "path alone", path, "C:\Data\"
    file = "old"
    Check "in the middle left out", _
        values.LoadDefaultPath("invoices", "export", path, , extension), True
    Check "extension", extension, "csv"
    Check "none kept", values.LoadDefaultPath("none", "export", path, file, extension), False
    Check "nothing touched", path & file & extension, "C:\Data\oldcsv"
    Check "others", values.LoadDefaultPath("orders", "export", path, file, extension), True
    Check "emptied", file & extension, "list"
    preferences.StopUPM
End Sub

Sub ObjectsByReference()
    Dim system, letters, kept, yes
    Set system = CreateObject("VelaUtil10.MyUtil").MySys
    Set letters = CreateObject("VelaUtil10.Collection")
    letters.Add "a", "a"
    Set kept = letters
    yes = True
    system.ClearCollection letters, yes
    Check "set to nothing", letters Is Nothing, True
    Check "emptied", kept.Count, 0
    Check "the flag", yes, True
    Set letters = kept
    system.ClearCollection letters
    Check "kept without the flag", letters Is kept, True
End Sub

Sub Check(what, given, wanted)
    If given <> wanted Then Err.Raise 17, "check", what & ": '" & given & "', not '" & wanted & "'"
End Sub
