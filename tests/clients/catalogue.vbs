' Walks the whole catalogue, late-bound: every class is made, or refused, and every member is called.
' At the end the script compares itself with the list of all members, so that none can be forgotten.
Option Explicit

Const HKCU = -2147483647
Const LaterClasses = " SecurityUtil ExtractionManager ExtractionError CertificateInfo CertificateEntity "
Const Callbacks = " IAdder IBubbleSort IEventHistoryItem INotificationSubscriber ISetPrinter "
Dim files, sys, folder, walked
Set files = CreateObject("Scripting.FileSystemObject")
Set sys = Made("SysUtil")
folder = files.BuildPath(files.GetSpecialFolder(2).Path, files.GetTempName())
files.CreateFolder folder
On Error Resume Next
Main
If Err.Number <> 0 Then Fail Err.Number & " " & Err.Description
files.DeleteFolder folder, True
WScript.Echo "catalogue.vbs: passed"

Sub Main()
    WalkMyUtil Made("MyUtil")
    WalkMathUtil Made("MathUtil")
    WalkTextUtil Made("TextUtil")
    WalkDatetimeUtil Made("DatetimeUtil")
    WalkTickCount Made("TickCount")
    WalkFileUtil Made("FileUtil"), folder & "\note.txt"
    WalkDirUtil Made("DirUtil")
    WalkSysUtil sys
    WalkGeoUtil Made("GeoUtil")
    WalkPlayUtil Made("PlayUtil")
    WalkRegistryUtil Made("RegistryUtil")
    WalkgUtil Made("gUtil"), folder & "\note.txt"
    WalkcTCP Made("cTCP")
    WalkCollection Made("Collection")
    WalkKeyValue Made("KeyValue")
    WalkSwitches Made("Switches")
    WalkSerializer Made("Serializer")
    WalkBubbleSort Made("BubbleSort")
    WalkQuadrado Made("Quadrado")
    WalkSecurity Made("Security")
    WalkNotifications sys.Notifications
    WalkNotification Made("Notification")
    WalkPulsar sys.Pulsar.CreatePulsar(250)
    WalkEventHistory Made("EventHistory")
    WalkPreferences Made("Preferences")
    WalkDPItem Made("DPItem")
    WalkKVItem Made("KVItem")
    WalkPPItem Made("PPItem")
    WalkRPItem Made("RPItem")
    WalkUIItem Made("UIItem")
    CompareWithList
End Sub

' ---- what everybody uses -----------------------------------------------------------------------

Sub WalkMyUtil(util)
    walked = "MyUtil"
    Check util.MyMath.DoisExpX(4), 16
    Check util.MyText.UTrim(" a "), "A"
    Check util.MyFile.QualExt("a.txt"), "txt"
    Check util.MyDatetime.FmtData, "dd-mm-yyyy"
    Check util.MySys.Notifications.Count, 6
    Check util.MyRegistry.DeleteValue(HKCU, "Software\None", "none"), 2
    Check util.MyMath Is Made("MyUtil").MyMath, True
    On Error Resume Next
    Check util.MySecurity Is Nothing, True
    Check Err.Number, &H80004001
    Err.Clear
End Sub

Sub WalkMathUtil(math)
    Dim point, first, second, numbers(2)
    walked = "MathUtil"
    point = math.SeparadorDecimais
    Check Mid(FormatNumber(1234.5, 1), 2, 1), math.SeparadorMilhares
    Check math.ValC("12" & point & "345"), CCur(12.345)
    Check VarType(math.ValC("1")), vbCurrency
    Check math.ValD(" -1e3 "), -1000
    Check math.ValI("40000") & math.ValL("40000") & math.ValL("letters"), "0400000"
    Check VarType(math.ValS("0")), vbSingle
    Check math.Extenso(-100, ""), "Menos cem "
    Check math.Arredondar(15, 2) & math.Arredondar(15, 1), "1520"
    Check math.ParteInteira("2.7") & math.ParteDecimal(12.345, 2), "235"
    first = 7
    second = "30"
    math.SwapInt first, second
    Check first & " " & second, "30 7"
    math.SwapLong first, second
    math.SwapLong (first), second
    Check first & " " & second, "7 7"
    numbers(0) = 3
    numbers(1) = 2
    numbers(2) = 1
    math.OrdenarArrayINT numbers
    Check numbers(0) & numbers(1) & numbers(2), "312"
    Check math.Max("9", 10) & math.Min(10, 9.5) & math.Max(Null, 3), "99.53"
    Check math.DoisExpX(31), &H80000000
    Check math.BitTrue(5, 3), True
    Check math.QueConteudoSql("1" & point & "5"), "1.5"
    Check math.CriarMD5("abc"), "900150983cd24fb0d6963f7d28e17f72"
    Check math.CriarMD5b("abc"), "ce1473cf80c6b3fda8e3dfc006adc315"
    Check VarType(math.HexToBinary("00ff")), vbArray + vbByte
    Check math.BinaryToHex(math.HexToBinary("00ff")), "00FF"
    Check math.BinaryToHex(Array(1, "16", 255)), "0110FF"
    Check math.HexToLong("FFFF"), -1
    Check math.LongToBase36(1295) & math.Base36ToLong("zz"), "ZZ1295"
    On Error Resume Next
    math.Arredondar 1, -3
    CheckError 11
    math.SwapInt 40000, 1
    CheckError 6
    math.Base36ToLong "1-"
    CheckError 5
End Sub

Sub WalkTextUtil(text)
    Dim first, last, words, copy, line
    walked = "TextUtil"
    Check text.ProcTras("abcabc", "bc", 4), 2
    Check text.ProcurarPar(1, "f(a(b))", "()"), 7
    Check text.ProcuraAbrirFechar("f(a(b))", "()", first, last) & first & last, "227"
    Check text.ProcuraPrimeiroDeVarios(3, "a,b;c", ";,"), 4
    text.ProcuraUmDeVarios 1203, 1, Array(20, 3), first, last
    Check first & last, "12"
    Check text.QuantosChar("banana", "an") & text.QuantosCaracteres("banana", "an"), "23"
    line = "ab-ab"
    text.MudaChar line, "ab", "x1"
    text.MudaChar2 line, "-", "+"
    text.MudaCharComMascara line, "#", "y"
    Check line, "xy+xy"
    Check text.ParteTexto("one two", words, 3) & words(1), "2two"
    Check text.SeparaPorChar("b;c;a", ";", words) & words(0), "3b"
    text.OrdenarArrayStr words
    Check words(0) & words(1) & words(2), "abc"
    copy = words
    Check text.SeparaPorChar("", ";", words) & UBound(words) & copy(0), "0-1a"
    Check text.StrCharValidos("12,5 EUR", "0123456789,"), "12,5"
    Check text.SoEstesChar("12,5 EUR", "0123456789,", "_"), "12,5____"
    text.CopyStr sys, copy
    Check copy Is sys, True
    text.CopyStr Null, copy
    Check IsNull(copy), True
    Check text.SemEspacos(" a b ") & text.SemNumeros("a1b22") & text.SemAlfa(12), "abab12"
    line = "S" & Chr(227) & "o"
    text.SubstituirAcentos line
    Check line, "Sao"
    Check text.StrPontoDecimal(1.5) & text.StrPontoDecimal(Null), "1.5"
    text.TelefoneSeparaIndicativoNumero "+351 912 345 678", first, last
    Check first & " " & last, "91 2345678"
    Check text.StrAlinhar("ab", 4) & text.StrAlinhar("ab", 4, "1") & text.StrAlinhar("ab", 4, , 0), _
        "ab    abab00"
    first = 12
    text.SwapTxt first, line
    Check first & line, "Sao12"
    Check text.UTrim(" ab "), "AB"
    Check text.QueConteudoSql("O'Neil"), "'O''Neil'"
    Check text.PreparaTextoComVars("@X1 of @X2", Array(3, "ten")), "3 of ten"
    Check text.SoNumeros("-1") Or Not text.SoNumeros("-1", True), False
    line = String(200, "-") & Chr(231) & Chr(128) & vbCrLf & Chr(0)
    Check text.Descompactar(text.Compactar(line)), line
    Check text.Desencriptar(text.Encriptar(line, 1234), "1234"), line
    Check text.DescodificarStr64(text.CodificarStr64(line)), line
    Check text.Descompactar64(text.Compactar64(line)), line
    On Error Resume Next
    text.SeparaPorChar String(40000, "a"), "a", words
    CheckError 6
    text.ParteTexto "abc", words, 0
    CheckError 5
    text.SemAlfa Array("a")
    CheckError 13
    Check UBound(words), -1
End Sub

Sub WalkDatetimeUtil(dates)
    walked = "DatetimeUtil"
    Check dates.DataMaisDias("28-02-2004", 2), "01-03-2004"
    Check dates.QueDia("31-12-49") & dates.QueMes("31-12-49") & dates.QueAno("31-12-49"), "31122049"
    Check dates.DiasEntreDatas("01-01-2004", "01-03-2004"), 60
    Check dates.UltimoDiaDoMes(2, 2004) & dates.DiasDoMes(2100, 2), "2929"
    Check dates.ComparaDatas("02-01-2004", "01-01-2004"), 1
    Check dates.DataEntre("01-01-2004", "01-01-2004", "02-01-2004"), True
    Check dates.DiaDaSemana(2004, "2", 29), 1
    Check dates.StandardStrData("31/12/2004") & dates.StandardStrData("?"), "31-12-2004?"
    Check dates.QueDia(dates.StandardStrData(CStr(Date))), Day(Date)
    Check dates.HHMM("9:05") & dates.StrHora(905), "90509:05"
    Check dates.FmtData, "dd-mm-yyyy"
    Check dates.VerificaData("29-02-1900") & dates.VerificaData("31-04-2004"), "06"
    Check dates.Contador Is Made("DatetimeUtil").Contador, True
End Sub

Sub WalkTickCount(watch)
    Dim counted
    walked = "TickCount"
    watch.Iniciar
    sys.Esperar 1100
    watch.Parar
    counted = watch.Milisegundos
    Check counted >= 1100 And watch.Milisegundos = counted, True
    Check watch.Segundos & watch.Minutos & watch.Horas, counted \ 1000 & "00"
    Check InStr(watch.Texto, watch.Segundos & " Segundo"), 1
    Check watch.Texto("hh:nn:") & watch.Texto("s"), "00:00:" & watch.Segundos
End Sub

' ---- files and the system ----------------------------------------------------------------------

' What a common dialog control looks like to its callers.
Class DialogControl
    Public DialogTitle
    Public FileName
    Public Filter
    Public Flags
    Public CancelError
    Sub ShowOpen()
        If DialogTitle = "Which?" And FileName = "a.txt" Then FileName = "C:\b.txt"
    End Sub
End Class

Sub WalkFileUtil(util, name)
    Dim text, hidden, path, first, extension, place, drive, file, names, server
    walked = "FileUtil"
    text = "a" & Chr(231) & Chr(227) & "o" & vbCrLf & Chr(0)
    hidden = folder & "\hidden"
    Check util.EscreverFicheiro(name, text) & util.LerFicheiro(name), "True" & text
    Check util.ExisteFich(name) & util.ExisteFich(folder), "-10"
    Check util.TestarPermissaoEscrita(name) And util.ProbablyIsFile(name), True
    Check util.QuantosFich(folder & "\*.t?t"), 1
    Check util.QuantosFicheiros(folder & "\*", names) & names(0), "1note.txt"
    Check util.QuantosFicheiros(folder & "\*.none", names) & UBound(names), "0-1"
    Check util.EncriptarParaFicheiro(text, hidden, "sesame"), True
    Check util.DesencriptarDeFicheiro(hidden, "SESAME"), text
    Check util.EncriptarFicheiroParaFicheiro(name, hidden), True
    Check util.DesencriptarFicheiroParaFicheiro(hidden, name) & util.LerFicheiro(name), "True" & text
    Check util.ApagaFicheiro(hidden) & util.ApagaFicheiro(hidden), "-10"
    Check util.ApagaFicheiro(util.NomeFichTemporario), -1
    util.SeparaPercursoNomeExt "C:\Data\ana.txt", path, first, extension
    Check path & " " & first & " " & extension, "C:\Data\ ana txt"
    util.SeparaPercursoNome "C:\Data\ana.txt", path, first
    Check path & first, util.QualPercurso("C:\Data\b") & util.QualFicheiro("C:\ana.txt")
    Check util.QualExt("ana.txt"), "txt"
    util.InfoDeFicheiro name, place, drive, file
    Check place.Path & file.Size & UCase(drive.DriveLetter), folder & "7C"
    Check util.InfoDaPasta(folder).Files.Count, 1
    Check util.InfoDaPasta(name & "\none") Is Nothing And util.InfoDeDrive("Q:\") Is Nothing, True
    Check util.DrivesNoSistema().Item("c").DriveLetter, util.InfoDeDrive("c").DriveLetter
    Check Len(util.SerialNumberEx(folder)), 8
    Check util.TransformarEmUNC(folder, server) & server, folder
    ' On a machine with a screen this would wait for somebody.
    Check util.QueFicheiro("Which?", True, "a.txt", New DialogControl), "C:\b.txt"
    On Error Resume Next
    util.UnRAR name
    CheckError &H80004001
End Sub

Sub WalkDirUtil(folders)
    Dim path
    walked = "DirUtil"
    For Each path In Array(folders.SystemDirectory, folders.UserDirectory, _
            folders.AllUserAppDataDirectory, folders.ProgramFilesCommonDirectory, _
            folders.ProgramFilesDirectory, folders.TempDirectory)
        Check files.FolderExists(path), True
    Next
End Sub

' What may be given the focus, once.
Class TextBox
    Private focused
    Public Sub SetFocus()
        If focused Then Err.Raise 5
        focused = True
    End Sub
End Class

Sub WalkSysUtil(sys)
    Dim environment, box, towns, page, before, service
    walked = "SysUtil"
    Check sys.Directories.TempDirectory & sys.Geo.GeoISO2, Made("DirUtil").TempDirectory & Made("GeoUtil").GeoISO2
    Check sys.Play Is Nothing Or sys.Notifications Is Nothing, False
    Check sys.EventHistory.Count & sys.Pulsar.Index, "00"
    sys.SaveMyError 1, 3021, "Sem registo", "Lista"
    Check sys.MyError(5), "(Lista) 3021 - Sem registo"
    Check sys.ErroDeRede(3186), True
    sys.Apitar
    before = Timer
    sys.Esperar 120
    Check Timer - before >= 0.1 Or Timer < before, True
    Check sys.AppYear, Year(Now)
    Set box = New TextBox
    Check sys.PoeFoco(box) & sys.PoeFoco(box) & sys.PoeFoco(sys), "-100"
    Set towns = Made("Collection")
    towns.Add "Lisboa", "capital"
    Check sys.ExisteNaCollection(towns, "CAPITAL"), True
    sys.ClearCollection towns, True
    Check towns Is Nothing, True
    Check sys.XsltTransform("<a>x</a>", "<none/>", page) & IsEmpty(page), "FalseTrue"
    Set environment = CreateObject("WScript.Shell").Environment("Process")
    Check sys.CurrentMachineName, environment("COMPUTERNAME")
    Check sys.LoginDoUtilizador, environment("USERNAME")
    Check sys.NomeDoUtilizador <> "" And sys.DominioDoUtilizador <> "", True
    Check Left(sys.IdentificadorDoUtilizador, 6), "S-1-5-"
    Check sys.RegistryLerValorLocalMachine("Software\None", "none"), ""
    Check sys.RegistryLerValorLocalUser("Software\None", "none"), ""
    Check sys.CriarIdentificador <> sys.CriarIdentificador, True
    Check sys.TPPixelX > 0 And sys.TPPixelY > 0, True
    service = "No such service"
    Check sys.StartService(service) Or sys.StopService(service, ""), False
    Check sys.ServiceIsRunning(service) Or sys.ServiceIsStopped(service), False
    Check sys.ServiceStatus(service) & (sys.ServiceStatus("Spooler") > 0), "0True"
    Check VarType(sys.IsConnectedToInternet) & VarType(sys.Is64Bit), vbBoolean & vbBoolean
    Check UBound(Split(sys.GetOSVersion, ".")), 2
    Check VarType(sys.GetNetworkIP), vbString
End Sub

Sub WalkGeoUtil(geo)
    walked = "GeoUtil"
    Check Len(geo.GeoISO2) & Len(geo.OSGeoISO3), "23"
    Check Right(geo.GeoRFC1766, 3), "-" & LCase(geo.GeoISO2)
    Check IsNumeric(geo.OSGeoNation) And IsNumeric(geo.GeoLanguageID), True
    Check Len(geo.GeoLatitude) > 0, Len(geo.GeoLongitude) > 0
    Check geo.OSGeoOfficialName <> "", True
End Sub

Sub WalkPlayUtil(player)
    walked = "PlayUtil"
    player.MailSound
    player.AlertSound
    player.SystemNotificationSound
    player.RecycleSound
    player.CriticalStopSound
    player.DeviceConnectSound
    player.DeviceDisconnectSound
    player.DeviceFailSound
End Sub

Sub WalkRegistryUtil(registry)
    Const Key = "Software\VelaUtilTestClient"
    Dim shell, content, name, names, code
    walked = "RegistryUtil"
    Set shell = CreateObject("WScript.Shell")
    shell.RegWrite "HKCU\" & Key & "\one\", ""
    shell.RegWrite "HKCU\" & Key & "\two\", ""
    Check registry.SetRegistryValue(HKCU, Key, "printer", "  A" & Chr(231) & "or 2 "), 0
    Check registry.GetRegistryValue(HKCU, Key, "printer", content) & content, "0A" & Chr(231) & "or 2"
    Check registry.GetRegistryValue(HKCU, Key, "none", content) & content, "2A" & Chr(231) & "or 2"
    Check sys.RegistryLerValorLocalUser(Key, "printer"), content
    Check registry.DeleteValue(HKCU, Key, "printer") & registry.DeleteValue(HKCU, Key, "printer"), "02"
    Check registry.DeleteKey(HKCU, "Software", "VelaUtilTestClient"), 5
    code = registry.GetFirstKey(HKCU, Key, name)
    Do While code = 0
        names = names & name & " "
        code = registry.GetNextKey(HKCU, Key, name)
    Loop
    Check names & code, "one two 259"
    Check registry.DeleteKey(HKCU, Key, "one") & registry.DeleteKey(HKCU, Key, "two"), "00"
    Check registry.DeleteKey(HKCU, "Software", "VelaUtilTestClient"), 0
End Sub

Sub WalkgUtil(old, name)
    Dim value, copy, towns, path, drive, file
    walked = "gUtil"
    Check old.gMD5("abc"), Made("MathUtil").CriarMD5("abc")
    Check old.gParteDecimal(12.345, 2) & old.g2expX(24), "3516777216"
    Check old.gDataEntre("02-01-2004", "01-01-2004", "02-01-2004"), True
    Check old.gDiaDaSemana(2004, 2, 29) & old.gDiasDoMes(2100, 2) & old.gStandardStrData("x"), "129x"
    Check old.gBitTrue(5, 3) & old.gMax(2, 10) & old.gMin(2, 10) & old.gHora("9:05"), "True102905"
    Set towns = Made("Collection")
    towns.Add "Lisboa", "capital"
    Check old.gExisteNaCollection(towns, "CAPITAL"), True
    old.gDestroiCollection towns, True
    Check towns Is Nothing, True
    Check old.gEscreverFicheiro(name, "linha") & old.gLerFicheiro(name), "Truelinha"
    old.gGetPathInfo name, path, drive, file
    Check file.Size & path.Path, 5 & old.gInfoDaPasta(folder).Path
    Check old.gDrivesNoSistema().Item("c").DriveLetter, old.gInfDeDrive("c").DriveLetter
    Check old.gTransformarEmUNC(name), name
    Check old.gCurrentMachineName(), sys.CurrentMachineName
    Check old.gLerValorLocalMachine("Software\None", "none"), ""
    value = "12,5 EUR"
    Check old.gStrCharValidos(value, "0123456789,"), "12,5"
    old.gCopyStr value, copy
    Check copy, value
End Sub

' Without a message loop nothing is sent or received here.
Sub WalkcTCP(tcp)
    Dim port, host, other
    walked = "cTCP"
    tcp.FiltroDeMensagens = "orders:"
    host = "127.0.0.1"
    tcp.Inicializar "5001", 5002, host
    Check tcp.portaLocal & tcp.portaRemota & tcp.Servidor & tcp.FiltroDeMensagens, _
        "50015002127.0.0.1orders:"
    tcp.Inicializar
    Check tcp.IniciarEscuta() & tcp.StatusPorta & (tcp.portaLocal > 0), "True2True"
    Set other = Made("cTCP")
    Check other.EnviarMsg("hello", 0) & other.StatusPorta, "True0"
    port = tcp.portaLocal
    other.Inicializar 0, port, host
    Check other.EnviarMsg("hello") & other.StatusPorta & other.MsgEnviada, "True6False"
    tcp.Inicializar 70000, -1
    Check tcp.StatusPorta, 0
    Set tcp.TcpCom = Nothing
    Check tcp.Servidor, ""
    On Error Resume Next
    Set tcp.TcpCom = other
    CheckError 13
End Sub

' ---- collections, switches, serializing --------------------------------------------------------

Sub WalkCollection(letters)
    Dim letter, seen
    walked = "Collection"
    letters.Add "a", "key"
    letters.Add "c"
    letters.Add "b", , 2
    letters.Add "d", , , "KEY"
    Check letters.Count & letters.Item("Key") & letters(2), "4ad"
    letters.Remove 2
    For Each letter In letters
        seen = seen & letter
    Next
    Check seen & VarType(letters.NewEnum), "abc" & vbDataObject
End Sub

Sub WalkKeyValue(record)
    walked = "KeyValue"
    Check record.Key & record.Group & record.Ref & record.StrValue & record.LngValue, "0"
    record.Key = "mine"
    record.Group = "Own"
    record.Ref = "name"
    record.StrValue = "text"
    record.LngValue = 70000
    Set record.ObjValue = sys
    Check record.Key & record.Group & record.Ref & record.StrValue & record.LngValue, "mineOwnnametext70000"
    Check record.ObjValue Is sys, True
End Sub

Sub WalkSwitches(switches)
    Dim own, record, listing
    walked = "Switches"
    switches.FromString "prog /user=ana /log / out=a=b"
    For Each record In switches
        listing = listing & record.LngValue & ":" & record.Ref & "=" & record.StrValue & " "
    Next
    Check listing, "1:user=ana 2:log= 3:out=a=b "
    Check switches.Item("LOG") Is switches(2), True
    Check switches("none") Is Nothing, True
    Check switches.FindByRef("[!a-n]*").Count & VarType(switches.NewEnum), 2 & vbDataObject
    Set own = Made("KeyValue")
    own.Key = "mine"
    own.Group = "Own"
    switches.Add own
    Check switches.FindByGroup("own")("MINE") Is own, True
    switches.Remove own
    switches.Remove 1
    Check switches.Count, 2
    switches.Clear
    Check switches.Count, 0
End Sub

Class Article
    Public Code
End Class

Sub WalkSerializer(serializer)
    Dim item
    walked = "Serializer"
    Set item = New Article
    item.Code = 12
    Check serializer.Serialize(item, "Item", "@Code,/Code"), "<Item code=""12""><Code>12</Code></Item>"
    Check serializer.DeSerialize(item, "<Item Code=""7""/>", "@Code") & item.Code, "False7"
End Sub

' A list to be sorted.
Class Digits
    Public Text
    Public Property Get Count()
        Count = Len(Text)
    End Property
    Public Function IsGreater(first, second)
        IsGreater = Mid(Text, first, 1) > Mid(Text, second, 1)
    End Function
    Public Sub Swap(first, second)
        Dim kept
        kept = Mid(Text, first, 1)
        Put first, Mid(Text, second, 1)
        Put second, kept
    End Sub
    Private Sub Put(place, digit)
        Text = Left(Text, place - 1) & digit & Mid(Text, place + 1)
    End Sub
End Class

Sub WalkBubbleSort(sorter)
    Dim list
    walked = "BubbleSort"
    Set list = New Digits
    list.Text = "3141592653"
    sorter.Sort list
    Check list.Text, "1123345569"
    sorter.Sort Nothing
End Sub

Class Multiplier
    Public Function Add(value1, value2)
        Add = value1 * value2
    End Function
End Class

Sub WalkQuadrado(square)
    walked = "Quadrado"
    square.Lado = 1.5
    Check square.Lado * 10 & " " & square.Area * 100 & " " & square.Perimetro, "15 225 6"
    Check square.Soma(Nothing, 2) & square.Soma(New Multiplier, 2), 4.25 & 4.5
End Sub

Sub WalkSecurity(permissions)
    walked = "Security"
    Check permissions.Read Or permissions.Modify Or permissions.Execute, False
    permissions.Read = True
    permissions.Modify = True
    permissions.Execute = True
    permissions.FullControl = True
    permissions.Delete = True
    permissions.Create = True
    permissions.Delete = False
    Check permissions.Read And permissions.FullControl And permissions.Create, True
    Check permissions.Delete, False
End Sub

' ---- notifications -----------------------------------------------------------------------------

' Subscribes to notifications of its users' own.
Class Follower
    Public Sub Notify(sender, E)
        If E.NotificationID = 1 Then
            If Left(E.Parameter.Tag, 3) = "MY:" Then E.Parameter.Subscribers.Add Me
        ElseIf E.NotificationID = 2 Then
            E.Parameter.Subscribers.Remove Me
        Else
            WalkNotificationEventArgs E
        End If
    End Sub
End Class

Sub WalkNotificationEventArgs(E)
    walked = "NotificationEventArgs"
    Check E.NotificationID > 6, True
    Check E.NotificationTAG & E.Parameter & E.Cancel, "MY:FIRSTgoFalse"
    E.Cancel = True
End Sub

Sub WalkNotifications(hub)
    Dim one, published, each_, listing
    walked = "Notifications"
    Set one = New Follower
    Set published = hub.Publish("my:first")
    hub.Welcome one
    Check published.Notify("go"), False
    walked = "Notifications"
    WalkSubscribers published.Subscribers, one
    walked = "Notifications"
    hub.Goodbye one
    Check published.Subscribers.Count, 0
    Check hub.ItemByTAG("MY:FIRST") Is published And hub.ItemByID(6) Is hub.OnPulse, True
    Check hub.Item(hub.Count) Is published, True
    hub.Remove "my:first"
    For Each each_ In Array(hub.OnWelcome, hub.OnGoodbye, hub.OnClosingApplication, _
            hub.OnApplicationResize, hub.OnOpeningDatabase, hub.OnPulse)
        listing = listing & each_.Id
    Next
    Check listing & hub.Count & VarType(hub.NewEnum), "1234566" & vbDataObject
End Sub

Sub WalkSubscribers(subscribers, one)
    Dim other
    walked = "Subscribers"
    Check subscribers.Count & VarType(subscribers.NewEnum), 1 & vbDataObject
    Check subscribers.Item(1) Is one, True
    Set other = New Follower
    subscribers.Add other
    subscribers.Remove 1
    subscribers.Remove other
    Check subscribers.Count, 0
    subscribers.Add one
End Sub

Sub WalkNotification(notification)
    walked = "Notification"
    notification.Tag = "MY:OWN"
    notification.Id = 77
    Check notification.Tag & notification.Id & notification.Subscribers.Count, "MY:OWN770"
    Check notification.Notify(), True
End Sub

Sub WalkPulsar(pulsar)
    walked = "Pulsar"
    Check pulsar.PulseInterval & pulsar.Index & pulsar.CreatePulsar().PulseInterval, "250160000"
    pulsar.PulseInterval = 300
    pulsar.PulsePattern = "1000"
    pulsar.StartPulse
    Check pulsar.PulsePattern & pulsar.PulseInterval & pulsar.Stopped, "1000300False"
    pulsar.StopPulse
    Check pulsar.Stopped, True
    pulsar.Dispose
End Sub

Class Happening
    Public EventType
    Public EventSource
    Public EventDate
    Public EventKey
End Class

Sub WalkEventHistory(register)
    Dim found
    walked = "EventHistory"
    Set found = New Happening
    found.EventKey = "a"
    found.EventType = 7
    found.EventSource = 3
    register.Add found
    Check register.FindItems(7).Count & register.FindItems(7, 4).Count, "10"
    Check register.FindItem(found) Is found And VarType(register.NewEnum) = vbDataObject, True
    register.Remove found
    Check register.Count, 0
    register.Add found
    register.RemoveAll
    Check register.Count, 0
End Sub

' ---- preferences -------------------------------------------------------------------------------

Class Form
    Public Name
    Public Visible
    Public Left
    Public Top
    Public Width
    Public Height
    Public WindowState
End Class

Class Printer
    Public DeviceName
    Public Copies
    Public Orientation
    Public PaperBin
    Public PaperSize
    Function SetPrinter(name)
        SetPrinter = False
    End Function
    Function SetProperties(newCopies, newOrientation, newBin, newSize)
        Copies = newCopies
        SetProperties = True
    End Function
End Class

Sub WalkPreferences(entry)
    walked = "Preferences"
    Check entry.MyPreferences Is Made("Preferences").MyPreferences, True
    WalkUPUtil entry.MyPreferences.NewPreferences()
End Sub

Sub WalkUPUtil(preferences)
    walked = "UPUtil"
    Check preferences.NewPreferences() Is preferences, False
    WalkUPDataSources preferences.ActiveDataSources
    Check preferences.StartUPM("sales", "ana"), -1
    WalkUPManager preferences.ActiveUPM
    WalkUPValueUtil preferences.Values
    WalkUPWindowUtil preferences.Windows
    WalkUPPrinterUtil preferences.Printers, preferences.ActiveUPM.PreferenceSections("PP")
    WalkRPManager Made("RPManager"), preferences.ActiveUPM
    preferences.StopUPM
    Check preferences.Values.GetValue("company", "general", "none"), ""
End Sub

Sub WalkUPDataSources(stores)
    walked = "UPDataSources"
    Set stores.LocalSource = sys
    Set stores.SharedSource = sys
    Set stores.SessionSource = sys
    Check stores.SessionSource Is sys, True
    stores.LocalSource = folder & "\my.up1.xml"
    stores.SharedSource = folder & "\my.up2.xml"
    stores.SessionSource = "none"
    Check stores.LocalSource & stores.SessionSource, folder & "\my.up1.xmlnone"
    Check files.GetFileName(stores.SharedSource), "my.up2.xml"
End Sub

Sub WalkUPManager(manager)
    walked = "UPManager"
    Check manager.ApplicationId & manager.UserId & manager.Loaded & manager.HasRegisteredSections, "SALESANATrueTrue"
    Check manager.IsRegistered("kv") & manager.IsRegistered("XX"), "TrueFalse"
    manager.ApplicationId = "stock"
    manager.UserId = "rui"
    Check manager.Load() & manager.Save() & manager.Delete("nobody"), "TrueTrueFalse"
    Set manager.PreferenceSections = manager.PreferenceSections
    WalkUPSections manager.PreferenceSections
End Sub

Sub WalkUPSections(sections)
    Dim section
    walked = "UPSections"
    Check sections.Count & sections.section("KV").Id & sections.section(1).Id, "4KVPP"
    Check VarType(sections.NewEnum), vbDataObject
    Set section = sections.section("DP")
    sections.Remove "DP"
    Check sections.section("DP") Is Nothing, True
    sections.Add section
    WalkIUPSection section
End Sub

Sub WalkIUPSection(section)
    walked = "IUPSection"
    section.Id = "ignored"
    section.Description = "ignored"
    Check section.Id & section.Description & section.Properties, "DPDefault Path[path][file][ext]"
    section.Loaded = False
    Check section.Loaded, False
    section.Saved = False
    Check section.Saved, False
    WalkUPItems section.Items, section.CreateItem()
    section.Items.Add section.CreateItem(), "INVOICES", "EXPORT"
    WalkIUPDataSource section.DataSourceManager, section
    Set section.DataSourceManager = section.DataSourceManager
End Sub

Sub WalkUPItems(items, item)
    walked = "UPItems"
    items.Add item, "INVOICES", "EXPORT"
    Check items.Item("invoices", "export") Is item, True
    Check items.Count & VarType(items.NewEnum), 1 & vbDataObject
    items.Remove "invoices", "export"
    items.Add item
    items.Clear
    Check items.Count, 0
End Sub

Sub WalkIUPDataSource(source, section)
    walked = "IUPDataSource"
    Check source.Save("SALES", "ANA", section) & source.Load("SALES", "ANA", section), "TrueTrue"
    source.DataSource = folder & "\other.up2.xml"
    Set source.DataSource = Nothing
    Check source.DataSource, folder & "\other.up2.xml"
End Sub

Sub WalkUPValueUtil(values)
    Dim path, file, extension
    walked = "UPValueUtil"
    values.SaveValue "company", "general", "7"
    Check values.GetValue("COMPANY", " General ") & values.GetValue("none", "general", "8"), "78"
    values.SaveDefaultPath "invoices", "export", "C:\Data\", , "csv"
    file = "old"
    Check values.LoadDefaultPath("invoices", "export", path, , extension), True
    Check values.LoadDefaultPath("none", "export", path, file, extension), False
    Check path & "|" & file & "|" & extension, "C:\Data\|old|csv"
End Sub

Sub WalkUPWindowUtil(windows)
    Dim window
    walked = "UPWindowUtil"
    Set window = New Form
    window.Name = "MainForm"
    window.Visible = True
    window.Left = 300
    window.Top = 150
    window.Width = 6000
    window.Height = 4500
    window.WindowState = 0
    windows.SaveWindowPos window
    window.Left = 0
    Check windows.LoadWindowPos(window) & window.Left, "True300"
End Sub

Sub WalkUPPrinterUtil(printers, section)
    Dim choice, standard
    walked = "UPPrinterUtil"
    Set choice = section.CreateItem()
    choice.PrinterName = "Front Desk"
    choice.Copies = 3
    section.Items.Add choice, "INVOICE", "1"
    Check printers.GetCopies(1, "invoice"), 3
    Check printers.GetPrinterDescription(1, "invoice"), "front desk (3 c" & Chr(243) & "pias)"
    Set standard = New Printer
    Check printers.UsePrintingPreferences(1, "invoice", standard, 2) & standard.Copies, "False2"
    ' On a machine with a printer this would wait for somebody.
    Check printers.UISetPrintingPreferences(0, 1, "invoice", Nothing), False
End Sub

Sub WalkRPManager(parameters, manager)
    Dim item
    walked = "RPManager"
    Check parameters.Load(Nothing) & parameters.Load(manager), "FalseTrue"
    Set item = Made("RPItem")
    item.Group = "monthly"
    item.View = "V1"
    item.Field = "Data"
    item.Mode = 2
    parameters.AddItem item
    Check parameters.GetItem("v1@data@2", "MONTHLY") Is item, True
    Check parameters.Items("V1@Data@2@MONTHLY") Is item, True
    WalkRPSection manager.PreferenceSections("RP")
    parameters.Clear
    Check parameters.Items.Count, 0
End Sub

Sub WalkRPSection(section)
    walked = "RPSection"
    section.Id = "ignored"
    section.Description = "ignored"
    Check section.Id & section.Description & section.Items.Count, "RPReport Parameters1"
    section.Loaded = False
    section.Saved = True
    Check section.Loaded & section.Saved & section.Properties, "FalseTrue[view][field][mode][value]"
    Check section.CreateItem().Mode, 0
    Set section.DataSourceManager = section.DataSourceManager
End Sub

Sub WalkDPItem(item)
    walked = "DPItem"
    item.Id = "invoices"
    item.Group = "export"
    item.Path = "C:\Data\"
    item.File = "list"
    item.Ext = "csv"
    Check item.Path & item.File & item.Ext, "C:\Data\listcsv"
    Check item.Id & item.Group & item.SearchKey, "INVOICESEXPORTINVOICES@EXPORT"
End Sub

Sub WalkKVItem(item)
    walked = "KVItem"
    item.Key = "company"
    item.Group = "general"
    item.Value = "Acme"
    Check item.Key & item.Group & item.Value & item.SearchKey, "COMPANYGENERALAcmeCOMPANY@GENERAL"
    item.Id = "town"
    Check item.Id & item.Key, "TOWNTOWN"
End Sub

Sub WalkPPItem(item)
    walked = "PPItem"
    item.PrinterName = "Front Desk"
    item.Copies = 2
    item.Orientation = 1
    item.PaperBin = 7
    item.PaperSize = 9
    item.Group = "1"
    item.Id = "invoice"
    Check item.PrinterName & item.Copies & item.Orientation & item.PaperBin & item.PaperSize, "FRONT DESK2179"
    Check item.Id & item.Group & item.SearchKey, "INVOICE1INVOICE@1"
End Sub

Sub WalkRPItem(item)
    walked = "RPItem"
    item.View = "V1"
    item.Field = "Data"
    item.Mode = 2
    item.Value = "31-12-2024"
    item.Group = "monthly"
    item.Id = "discarded"
    Check item.View & item.Field & item.Mode & item.Value, "V1Data231-12-2024"
    Check item.Id & item.Group & item.SearchKey, "V1@Data@2MONTHLYV1@Data@2@MONTHLY"
End Sub

Sub WalkUIItem(item)
    walked = "UIItem"
    item.ScreenWxH = "1920x1080"
    item.Width = 1
    item.Height = 2
    item.Left = 3
    item.Top = 4
    item.WindowState = 2
    item.Tag = "note"
    item.Group = "main"
    item.Id = "form"
    Check item.ScreenWxH & item.Width & item.Height & item.Left & item.Top & item.WindowState, "1920x108012342"
    Check item.Tag & item.Id & item.Group & item.SearchKey, "noteFORMMAINFORM@MAIN"
End Sub

' ---- the list of all members -------------------------------------------------------------------

' Each class of the list is made or refused, as it should be, and each member is in its class's walk.
Sub CompareWithList()
    Dim here, line, words, walk
    here = files.GetParentFolderName(WScript.ScriptFullName)
    For Each line In Split(Content(here & "\..\frame\catalogue.txt"), vbLf)
        words = Split(Replace(Replace(Replace(line, vbCr, ""), "(", " "), ":", " "), " ")
        If UBound(words) = 1 Then
            walked = words(1)
            walk = Between(Content(WScript.ScriptFullName), "Sub Walk" & WalkOf(walked) & "(", "End Sub")
            ' Not every script engine can create a document.
            If walked = "Serializer" Then walk = walk & Content(here & "\serializer.js")
            If InStr("creatable global noncreatable", words(0)) > 0 Then
                Check Creatable(walked), words(0) <> "noncreatable" And Not IsLater(walked)
                Check walk <> "" Or IsLater(walked) Or InStr(Callbacks, " " & walked & " ") > 0, True
            End If
        ElseIf UBound(words) > 2 And walk <> "" Then
            CheckWalked words(2), words(3), walk
        End If
    Next
    Check walked, "Serializer"
End Sub

Sub CheckWalked(kind, name, walk)
    Dim wanted
    Set wanted = New RegExp
    Select Case kind
        Case "let": wanted.Pattern = "\." & name & " = "
        Case "set": wanted.Pattern = "Set \w+\." & name & " = "
        Case "get", "method": wanted.Pattern = "\." & name & "\b(?! = )"
        Case Else: Exit Sub
    End Select
    If Not wanted.Test(walk) Then Fail kind & " " & name & " is never called"
End Sub

' Members of interfaces that several classes have are called through one of them.
Function WalkOf(name)
    WalkOf = name
    If name = "INotification" Then WalkOf = "Notification"
    If name = "IUPItem" Then WalkOf = "KVItem"
End Function

Function IsLater(name)
    IsLater = InStr(LaterClasses, " " & name & " ") > 0
End Function

Function Creatable(name)
    Dim object
    On Error Resume Next
    Set object = CreateObject("VelaUtil10." & name)
    Creatable = Err.Number = 0
    Err.Clear
End Function

Function Content(name)
    Content = files.OpenTextFile(name).ReadAll
End Function

Function Between(text, first, last)
    Dim start
    start = InStr(text, first)
    If start > 0 Then Between = Mid(text, start, InStr(start, text, last) - start)
End Function

' ---- checking ----------------------------------------------------------------------------------

Function Made(name)
    Set Made = CreateObject("VelaUtil10." & name)
End Function

Sub Check(given, wanted)
    If given <> wanted Then Fail "'" & given & "', not '" & wanted & "'"
End Sub

Sub CheckError(wanted)
    Dim found
    found = Err.Number
    Err.Clear
    If found <> wanted Then Fail "error " & found & ", not " & wanted
End Sub

' Ends the program: an error raised here would be lost where errors are passed over.
Sub Fail(why)
    WScript.Echo "catalogue.vbs, " & walked & ": " & why
    files.DeleteFolder folder, True
    WScript.Quit 1
End Sub
