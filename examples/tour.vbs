' A tour of the preferences: save things for a user, look at the documents, read everything back.
'
'     ./dev demo                          builds the library and runs this
'     cscript //nologo tour.vbs           where the library is registered already
'
' Every line shows what was asked and what came back. A step that gives anything else ends the tour
' with a message and exit code 1. Nothing is left behind.
Option Explicit

Dim files, folder, failure
Set files = CreateObject("Scripting.FileSystemObject")
folder = files.BuildPath(files.GetSpecialFolder(2).Path, files.GetTempName())
failure = ""

files.CreateFolder folder
On Error Resume Next
Tour
If Err.Number <> 0 And failure = "" Then
    failure = "error " & Err.Number & " from " & Err.Source & ": " & Err.Description
End If
files.DeleteFolder folder, True
On Error GoTo 0
If failure = "" And files.FolderExists(folder) Then failure = folder & " could not be removed"

WScript.Echo ""
If failure <> "" Then
    WScript.Echo "THE TOUR FAILED: " & failure
    WScript.Quit 1
End If
WScript.Echo "That was the tour: every step gave what it should."

' ---- the steps -----------------------------------------------------------------------------------

Sub Tour()
    Dim preferences, again
    WScript.Echo "A tour of Vela.Util.10"
    Set preferences = CreateObject("VelaUtil10.Preferences").MyPreferences
    StartThem preferences
    SaveValues preferences
    SaveWindow preferences
    SavePrinter preferences
    StopThem preferences
    ShowDocuments
    Set again = StartAgain(preferences)
    ReadEverything again
    again.StopUPM
End Sub

Sub StartThem(preferences)
    Heading "Start the preferences of application sales and user ana"
    Remark "Two documents keep them. Without a folder they go to the current one; the tour uses"
    Remark folder
    UseDocuments preferences
    Expect "StartUPM(""sales"", ""ana"")", preferences.StartUPM("sales", "ana"), -1
    Expect "ActiveUPM.ApplicationId", preferences.ActiveUPM.ApplicationId, "SALES"
    Expect "ActiveUPM.UserId", preferences.ActiveUPM.UserId, "ANA"
    Expect "ActiveUPM.PreferenceSections.Count", preferences.ActiveUPM.PreferenceSections.Count, 4
End Sub

Sub SaveValues(preferences)
    Dim values
    Set values = preferences.Values
    Heading "Save two values and a default path"
    Expect "GetValue(""lastcompany"", ""general"", ""none"")", _
        values.GetValue("lastcompany", "general", "none"), "none"
    values.SaveValue "lastcompany", "general", "7"
    Remark "SaveValue ""lastcompany"", ""general"", ""7"""
    values.SaveValue "greeting", "general", "Tom & ""Jerry"""
    Remark "SaveValue ""greeting"", ""general"", ""Tom & """"Jerry"""""""
    values.SaveDefaultPath "invoices", "export", "C:\Data\", "list", "csv"
    Remark "SaveDefaultPath ""invoices"", ""export"", ""C:\Data\"", ""list"", ""csv"""
    Remark "Case does not matter when asking:"
    Expect "GetValue(""LastCompany"", ""GENERAL"")", _
        values.GetValue("LastCompany", "GENERAL"), "7"
End Sub

Sub SaveWindow(preferences)
    Dim window
    Set window = NewForm(300, 150, 6000, 4500)
    Heading "Save where a window is"
    Remark "Any object with Left, Top, Width, Height, WindowState, Visible and Name will do."
    Remark "This one is at 300, 150 and measures 6000 x 4500 (twips; 1440 to the inch)."
    preferences.Windows.SaveWindowPos window, , "forms"
    Remark "SaveWindowPos window, , ""forms"""
    window.Left = 0
    window.Visible = False
    preferences.Windows.SaveWindowPos window, , "forms"
    Remark "Then it was moved and hidden, and saved once more: hidden windows do not count."
End Sub

Sub SavePrinter(preferences)
    Dim choice
    Heading "Save which printer invoices go to"
    Remark "UISetPrintingPreferences asks the user; the tour adds the item by itself."
    Set choice = preferences.ActiveUPM.PreferenceSections("PP").CreateItem()
    choice.PrinterName = "Front Desk"
    choice.Copies = 2
    preferences.ActiveUPM.PreferenceSections("PP").Items.Add choice, "INVOICE", "1"
    Expect "GetCopies(1, ""invoice"")", preferences.Printers.GetCopies(1, "invoice"), 2
    Expect "GetPrinterDescription(1, ""invoice"")", _
        preferences.Printers.GetPrinterDescription(1, "invoice"), _
        "front desk (2 c" & Chr(243) & "pias)"
End Sub

Sub StopThem(preferences)
    Heading "Stop: now everything is written"
    Expect "section KV saved", preferences.ActiveUPM.PreferenceSections("KV").Saved, False
    preferences.StopUPM
    Remark "StopUPM"
    Expect "section KV saved", preferences.ActiveUPM.PreferenceSections("KV").Saved, True
    Expect "ActiveUPM.Loaded", preferences.ActiveUPM.Loaded, False
End Sub

Sub ShowDocuments()
    Dim machine, user
    Heading "The documents"
    Remark "Printers and windows belong to the machine:"
    machine = DocumentText("sales.up1.xml")
    ShowIndented machine
    CheckDocument "sales.up1.xml", machine, _
        "<PP_Section id=""PP"" description=""Printer Preferences""><PP_Group id=""1"">" & _
        "<PP_Item id=""INVOICE"" paperbin=""0"" papersize=""0"" orientation=""1"" copies=""2""" & _
        " printername=""FRONT DESK""/></PP_Group></PP_Section>" & _
        "<UI_Section id=""UI"" description=""User Interface""><UI_Group id=""FORMS"">" & _
        "<UI_Item id=""MAINFORM"" screenwxh=""" & ScreenIn(machine) & """ width=""6000""" & _
        " height=""4500"" left=""300"" top=""150"" windowstate=""0"" tag=""""/>" & _
        "</UI_Group></UI_Section>"
    Remark "Paths and values travel with the user:"
    user = DocumentText("sales.up2.xml")
    ShowIndented user
    CheckDocument "sales.up2.xml", user, _
        "<DP_Section id=""DP"" description=""Default Path""><DP_Group id=""EXPORT"">" & _
        "<DP_Item id=""INVOICES"" path=""C:\Data\"" file=""list"" ext=""csv""/>" & _
        "</DP_Group></DP_Section>" & _
        "<KV_Section id=""KV"" description=""Key Value""><KV_Group id=""GENERAL"">" & _
        "<KV_Item id=""LASTCOMPANY"" value=""7"" key=""LASTCOMPANY""/>" & _
        "<KV_Item id=""GREETING"" value=""Tom &amp; &quot;Jerry&quot;"" key=""GREETING""/>" & _
        "</KV_Group></KV_Section>"
End Sub

Function StartAgain(preferences)
    Dim again
    Heading "Start again, with preferences that know nothing yet"
    Set again = preferences.NewPreferences()
    UseDocuments again
    Expect "NewPreferences().StartUPM(""Sales"", ""Ana"")", again.StartUPM("Sales", "Ana"), -1
    Set StartAgain = again
End Function

Sub ReadEverything(preferences)
    Dim path, file, extension, window, printer, found
    Heading "Read everything back"
    Expect "GetValue(""lastcompany"", ""general"")", _
        preferences.Values.GetValue("lastcompany", "general"), "7"
    Expect "GetValue(""greeting"", ""general"")", _
        preferences.Values.GetValue("greeting", "general"), "Tom & ""Jerry"""

    found = preferences.Values.LoadDefaultPath("invoices", "export", path, file, extension)
    Expect "LoadDefaultPath(""invoices"", ""export"", path, file, extension)", found, True
    Expect "path & file & ""."" & extension", path & file & "." & extension, "C:\Data\list.csv"

    Set window = NewForm(0, 0, 100, 100)
    Expect "LoadWindowPos(window, , ""forms"")", _
        preferences.Windows.LoadWindowPos(window, , "forms"), True
    Expect "window.Left, Top", window.Left & ", " & window.Top, "300, 150"
    Expect "window.Width, Height", window.Width & ", " & window.Height, "6000, 4500"

    Set printer = New ScriptPrinter
    Expect "UsePrintingPreferences(1, ""invoice"", printer)", _
        preferences.Printers.UsePrintingPreferences(1, "invoice", printer), True
    Expect "printer.DeviceName", printer.DeviceName, "FRONT DESK"
    Expect "printer.Copies", printer.Copies, 2
    Expect "printer.Orientation (1 is portrait)", printer.Orientation, 1
End Sub

Sub UseDocuments(preferences)
    preferences.ActiveDataSources.LocalSource = files.BuildPath(folder, "sales.up1.xml")
    preferences.ActiveDataSources.SharedSource = files.BuildPath(folder, "sales.up2.xml")
End Sub

' ---- the objects that the tour brings ------------------------------------------------------------

Class Form
    Public Name
    Public Visible
    Public Left
    Public Top
    Public Width
    Public Height
    Public WindowState
End Class

Function NewForm(left, top, width, height)
    Dim made
    Set made = New Form
    made.Name = "MainForm"
    made.Visible = True
    made.WindowState = 0
    made.Left = left
    made.Top = top
    made.Width = width
    made.Height = height
    Set NewForm = made
End Function

' Stands for the program's printer: any object with the members of ISetPrinter that are needed.
Class ScriptPrinter
    Public DeviceName
    Public Copies
    Public Orientation
    Public PaperBin
    Public PaperSize

    Function SetPrinter(name)
        DeviceName = name
        SetPrinter = True
    End Function

    Function SetProperties(newCopies, newOrientation, newBin, newSize)
        Copies = newCopies
        Orientation = newOrientation
        PaperBin = newBin
        PaperSize = newSize
        SetProperties = True
    End Function
End Class

' ---- documents -----------------------------------------------------------------------------------

' The text of a document. Blanks between elements, which some XML parsers put in, are left out.
Function DocumentText(name)
    Dim stream, text, at
    Set stream = files.OpenTextFile(files.BuildPath(folder, name))
    text = stream.ReadAll
    stream.Close
    at = InStr(text, "?>" & vbCrLf)
    If at = 0 Then Fail name & " does not begin as an XML document"
    at = at + 3
    DocumentText = Left(text, at) & Without(vbTab, Without(vbLf, Without(vbCr, Mid(text, at + 1))))
End Function

Function Without(mark, text)
    Without = Replace(text, mark, "")
End Function

' The resolution of this screen as the document holds it: the one thing that is not known before.
Function ScreenIn(text)
    Dim first, last, parts
    first = InStr(text, "screenwxh=""")
    If first = 0 Then Fail "the window's screen resolution is not in the document"
    first = first + Len("screenwxh=""")
    last = InStr(first, text, """")
    ScreenIn = Mid(text, first, last - first)
    parts = Split(ScreenIn, "x")
    If UBound(parts) <> 1 Then Fail "the screen's resolution is " & ScreenIn
    If Not (IsNumeric(parts(0)) And IsNumeric(parts(1))) Then Fail "it is " & ScreenIn
End Function

Sub CheckDocument(name, text, sections)
    Dim wanted, at
    wanted = "<?xml version=""1.0"" encoding=""windows-1252""?>" & vbCrLf & _
        "<UserPreferences version=""1""><App id=""SALES""><App_User id=""ANA"">" & sections & _
        "</App_User></App></UserPreferences>"
    If text <> wanted Then
        at = 1
        Do While Mid(text, at, 1) = Mid(wanted, at, 1)
            at = at + 1
        Loop
        Fail name & " differs at character " & at & ":" & vbCrLf & _
            "  found  " & Mid(text, at, 60) & vbCrLf & "  wanted " & Mid(wanted, at, 60)
    End If
    Remark "(every byte of " & name & " is as it should be, blanks between elements aside)"
End Sub

Sub ShowIndented(text)
    Dim line, depth
    depth = 1
    For Each line In Split(Replace(Replace(text, vbCrLf, ""), "><", ">" & vbLf & "<"), vbLf)
        If Left(line, 2) = "</" Then depth = depth - 1
        WScript.Echo Space(2 + 2 * depth) & line
        If Mid(line, 2, 1) <> "/" And Mid(line, 2, 1) <> "?" And Right(line, 2) <> "/>" Then
            depth = depth + 1
        End If
    Next
End Sub

' ---- printing and checking -----------------------------------------------------------------------

Dim headings
Sub Heading(text)
    headings = headings + 1
    WScript.Echo ""
    WScript.Echo headings & ". " & text
    WScript.Echo ""
End Sub

Sub Remark(text)
    WScript.Echo "   " & text
End Sub

Sub Expect(asked, given, wanted)
    Dim gap
    gap = 62 - Len(asked)
    If gap < 1 Then gap = 1
    Remark asked & Space(gap) & "-> " & given
    If given <> wanted Then Fail asked & " should have given " & wanted
End Sub

Sub Fail(message)
    failure = message
    Err.Raise 17, "tour", message
End Sub
