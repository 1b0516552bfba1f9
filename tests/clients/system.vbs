' The machine, its user, services, country and sounds from a script; objects of the script's own that
' are sorted, asked to add, and given the focus.
Option Explicit

Dim sys
Set sys = CreateObject("VelaUtil10.MyUtil").MySys
On Error Resume Next
Main
If Err.Number <> 0 Then Fail Err.Number & " " & Err.Description
WScript.Echo "system.vbs: passed"

Sub Main()
    Machine
    Country
    Sounds
    Services
    Focus
    Sorting
    Squares
    Permissions
End Sub

Sub Machine()
    Dim shell, before
    Set shell = CreateObject("WScript.Shell")
    Check "login", sys.LoginDoUtilizador, shell.ExpandEnvironmentStrings("%USERNAME%")
    Check "computer", sys.CurrentMachineName, shell.ExpandEnvironmentStrings("%COMPUTERNAME%")
    Check "names", sys.NomeDoUtilizador <> "" And sys.DominioDoUtilizador <> "", True
    Check "identifier", Left(sys.IdentificadorDoUtilizador, 6), "S-1-5-"
    Check "year", sys.AppYear, Year(Now)
    Check "version", UBound(Split(sys.GetOSVersion, ".")), 2
    Check "types", TypeName(sys.Is64Bit) & TypeName(sys.IsConnectedToInternet), "BooleanBoolean"
    Check "address", TypeName(sys.GetNetworkIP), "String"
    Check "pixels", sys.TPPixelX > 0 And sys.TPPixelY > 0, True
    Check "numbers", sys.CriarIdentificador <> sys.CriarIdentificador, True
    sys.Apitar
    before = Timer
    sys.Esperar 120
    Check "waited", Timer - before >= 0.1 Or Timer < before, True
    sys.Esperar -1
    Dim target
    Check "style sheet", sys.XsltTransform("<a>x</a>", "<none/>", target), False
    Check "no target", target, Empty
End Sub

Sub Country()
    Dim geo
    Set geo = CreateObject("VelaUtil10.GeoUtil")
    Check "accessor", sys.Geo.GeoISO2, geo.GeoISO2
    Check "codes", Len(geo.GeoISO2) & Len(geo.OSGeoISO3), "23"
    Check "tag", Right(geo.GeoRFC1766, 3), "-" & LCase(geo.GeoISO2)
    Check "numbers", IsNumeric(geo.OSGeoNation) And IsNumeric(geo.GeoLanguageID), True
    Check "position", (geo.GeoLatitude = "") = (geo.GeoLongitude = ""), True
    Check "name", geo.OSGeoOfficialName <> "", True
End Sub

Sub Sounds()
    Dim player
    For Each player In Array(CreateObject("VelaUtil10.PlayUtil"), sys.Play)
        player.MailSound
        player.AlertSound
        player.SystemNotificationSound
        player.RecycleSound
        player.CriticalStopSound
        player.DeviceConnectSound
        player.DeviceDisconnectSound
        player.DeviceFailSound
    Next
End Sub

Sub Services()
    Check "missing", sys.ServiceStatus("No such service"), 0
    Check "missing", sys.ServiceIsRunning("No such service") Or sys.ServiceIsStopped("No such service"), False
    Check "missing", sys.StartService("No such service") Or sys.StopService("No such service"), False
    Check "known", sys.ServiceStatus("Spooler") > 0, True
End Sub

Class Control
    Public Focused
    Public Sub SetFocus()
        Focused = Focused + 1
        If Focused > 1 Then Err.Raise 5
    End Sub
End Class

Sub Focus()
    Dim box
    Set box = New Control
    Check "focus", sys.PoeFoco(box), -1
    Check "it was asked", box.Focused, 1
    Check "it refuses", sys.PoeFoco(box), 0
    Check "no such member", sys.PoeFoco(sys), 0
    Check "nothing", sys.PoeFoco(Nothing), 0
End Sub

Class Words
    Public Entries
    Public Swaps
    Public Property Get Count()
        Count = Entries.Count
    End Property
    Public Function IsGreater(first, second)
        If Entries.Item(first) = "fail" Then Err.Raise 1000, "Words", "no such word"
        IsGreater = LCase(Left(Entries.Item(first), 1)) > LCase(Left(Entries.Item(second), 1))
    End Function
    Public Sub Swap(first, second)
        Dim kept
        kept = Entries.Item(first)
        Entries.Item(first) = Entries.Item(second)
        Entries.Item(second) = kept
        Swaps = Swaps + 1
    End Sub
End Class

Function ListOf(text)
    Dim word
    Set ListOf = New Words
    Set ListOf.Entries = CreateObject("Scripting.Dictionary")
    For Each word In Split(text, " ")
        ListOf.Entries.Add ListOf.Entries.Count + 1, word
    Next
End Function

Function Listing(list)
    Dim word
    For Each word In list.Entries.Items
        Listing = Listing & word & " "
    Next
End Function

Function Sorted(list)
    CreateObject("VelaUtil10.BubbleSort").Sort list
    Sorted = Listing(list)
End Function

Sub Sorting()
    Dim list
    Set list = ListOf("pear Apple plum avocado fig Peach")
    Check "sorted", Sorted(list), "Apple avocado fig pear plum Peach "
    list.Swaps = 0
    Check "sorted again", Sorted(list) & list.Swaps, "Apple avocado fig pear plum Peach 0"
    Check "one without letters", Trim(Sorted(ListOf(""))), ""
    CreateObject("VelaUtil10.BubbleSort").Sort Nothing
    Set list = ListOf("z fail a")
    On Error Resume Next
    CreateObject("VelaUtil10.BubbleSort").Sort list
    Check "the list's own error", Err.Number <> 0, True
    Check "left alone", Listing(list), "z fail a "
    Err.Clear
End Sub

Class Multiplier
    Public Function Add(value1, value2)
        Add = value1 * value2
    End Function
End Class

Sub Squares()
    Dim square
    Set square = CreateObject("VelaUtil10.Quadrado")
    Check "at first", square.Lado + square.Area + square.Perimetro, 0
    square.Lado = 1.5
    Check "square", square.Area & " " & square.Perimetro * 10, 2.25 & " " & 60
    Check "by itself", square.Soma(Nothing, 2), 4.25
    Check "by the script", square.Soma(New Multiplier, 2), 4.5
End Sub

Sub Permissions()
    Dim permissions
    Set permissions = CreateObject("VelaUtil10.Security")
    permissions.FullControl = True
    permissions.Delete = True
    permissions.Delete = False
    permissions.Create = True
    Check "refused", permissions.Read Or permissions.Modify Or permissions.Execute Or permissions.Delete, False
    Check "granted", permissions.FullControl And permissions.Create, True
End Sub

Sub Check(what, given, wanted)
    If given <> wanted Then Fail what & ": '" & given & "', not '" & wanted & "'"
End Sub

' Ends the program: an error raised here would be lost where errors are passed over.
Sub Fail(why)
    WScript.Echo "system.vbs: " & why
    WScript.Quit 1
End Sub
