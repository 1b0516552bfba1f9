// Walks the whole catalogue, late-bound: every class is made or refused, every member called. The
// expressions of a walk must hold with the object's members in scope; a pair of a number and an
// expression is an error that must be raised. Properties that a walk leaves out are set and read
// back. No member may be left out that stands in the list of all members.
var HKCU = -2147483647;
var notImplemented = 0x4001;
var files = new ActiveXObject("Scripting.FileSystemObject");
var environment = new ActiveXObject("WScript.Shell").Environment("Process");
var folder = files.BuildPath(files.GetSpecialFolder(2).Path, files.GetTempName());
var note = folder + "\\note.txt";
var key = "Software\\VelaUtilTestClient";
var service = "No such service";
var later = /^(SecurityUtil|CertificateEntity|CertificateInfo|ExtractionManager|ExtractionError)$/;
var ofCallers = /^(IAdder|IBubbleSort|IEventHistoryItem|INotificationSubscriber|ISetPrinter)$/;
var bytes = "a\u00E7\u00E3o\r\n\0";
var kept, manager;  // from one expression to the next
var at;  // the last expression begun

// What callers implement.
var multiplier = { Add: function (value1, value2) { return value1 * value2; } };
var digits = {
    text: [3, 1, 4, 1, 5, 9, 2, 6], Count: 8,
    IsGreater: function (first, second) { return this.text[first - 1] > this.text[second - 1]; },
    Swap: function (first, second) {
        var held = this.text[first - 1];
        this.text[first - 1] = this.text[second - 1];
        this.text[second - 1] = held;
    }
};
var dialog = {
    DialogTitle: "", FileName: "", Filter: "", Flags: 0, CancelError: false,
    ShowOpen: function () { if (this.DialogTitle === "Which?") this.FileName = "C:/b.txt"; }
};
var box = { SetFocus: function () { if (kept++) throw new Error("not again"); } };
var follower = {
    Notify: function (sender, E) {
        var known = E.NotificationID > 2 || E.Parameter.Tag !== "MY:FIRST";
        if (E.NotificationID === 1 && !known) E.Parameter.Subscribers.Add(this);
        else if (E.NotificationID === 2) E.Parameter.Subscribers.Remove(this);
        else if (E.NotificationID > 6) walk("NotificationEventArgs", E);
    }
};
var happening = { EventType: 7, EventSource: 3, EventDate: 0, EventKey: "a" };
var article = { Code: 12 };
var document = new ActiveXObject("Msxml2.DOMDocument.3.0");
var form = {
    Name: "MainForm", Visible: true, Left: 300, Top: 150, Width: 6000, Height: 4500, WindowState: 0
};
var printer = {
    DeviceName: "own", Copies: 1, Orientation: 1, PaperBin: 1, PaperSize: 9,
    SetPrinter: function () { return false; },
    SetProperties: function (copies) { return this.Copies = copies; }
};

var walks = {
    MyUtil: [
        "MyMath.DoisExpX(4) == 16", "MyText.UTrim(' a ') == 'A'",
        "MyFile.QualExt('a.txt') == 'txt'", "MyDatetime.FmtData == 'dd-mm-yyyy'",
        "MySys.Notifications.Count == 6", "MyRegistry.DeleteValue(HKCU, key, 'none') == 2",
        [notImplemented, "MySecurity"]
    ],
    MathUtil: [
        "ValC('12') == 12", "ValD(' -1e3 ') == -1000", "ValI('40000') == 0",
        "ValL('40000') == 40000", "ValS('7') == 7", "Extenso(-100, '') == 'Menos cem '",
        "Arredondar(15, 2) == 15", [11, "Arredondar(1, -3)"], "SwapInt(7, '30') == undefined",
        [10, "SwapInt(40000, 1)"], "SwapLong(70000, 7) == undefined",
        "OrdenarArrayINT(list(2, 1)) == undefined", "DoisExpX(31) == -2147483648",
        "Max('9', 10) == 9", "Min(10, 9.5) == 9.5",
        "CriarMD5('abc') == '900150983cd24fb0d6963f7d28e17f72'", "ParteDecimal(12.345, 2) == 35",
        "BitTrue(5, 3)", "SeparadorMilhares != SeparadorDecimais", "ParteInteira(2.7) == 2",
        "QueConteudoSql('1' + SeparadorDecimais + '5') == '1.5'",
        "CriarMD5b('abc') == 'ce1473cf80c6b3fda8e3dfc006adc315'",
        "BinaryToHex(HexToBinary('00ff')) == '00FF'", "HexToLong('FFFF') == -1",
        "LongToBase36(1295) == 'ZZ'", "Base36ToLong('zz') == 1295", [5, "Base36ToLong('1-')"]
    ],
    TextUtil: [
        "ProcTras('abcabc', 'bc', 4) == 2", "ProcuraAbrirFechar('f(a(b))', '()', 0, 0) == 2",
        "ProcurarPar(1, 'f(a(b))', '()') == 7", "ProcuraPrimeiroDeVarios(3, 'a,b;c', ';,') == 4",
        "ProcuraUmDeVarios('a', 1, list('a'), 0, 0) == undefined",
        "OrdenarArrayStr(list('b', 'a')) == undefined", "QuantosChar('banana', 'an') == 2",
        "QuantosCaracteres('banana', 'an') == 3", "MudaChar('ab', 'a', 'b') == undefined",
        "MudaChar2('ab', 'a', 'b') == undefined", [93, "MudaCharComMascara('[k', '[k', '')"],
        "ParteTexto('one two', undefined, 3) == 2", [5, "ParteTexto('abc', undefined, 0)"],
        "SeparaPorChar('b;c;a', ';', undefined) == 3",
        "StrCharValidos('12,5 EUR', '0123456789,') == '12,5'", "CopyStr(1, 2) == undefined",
        "SemEspacos(' a b ') == 'ab'", "SemNumeros('a1b22') == 'ab'", "SemAlfa(12) == '12'",
        "SubstituirAcentos('a') == undefined", "StrPontoDecimal(1.5) == '1.5'",
        "StrPontoDecimal(null) == ''", "TelefoneSeparaIndicativoNumero('', 0, 0) == undefined",
        "StrAlinhar('ab', 4, 1, '0') == '00ab'", "StrAlinhar('ab', 4) == 'ab  '",
        "UTrim(' ab ') == 'AB'", "SwapTxt('a', 'b') == undefined",
        "QueConteudoSql(\"O'Neil\") == \"'O''Neil'\"",
        "PreparaTextoComVars('@X1', list('a')) == 'a'",
        "SoEstesChar('12,5 EUR', '0123456789,', '_') == '12,5____'", "!SoNumeros('-1')",
        "SoNumeros('-1', true)", "Descompactar(Compactar(bytes)) == bytes",
        "Desencriptar(Encriptar(bytes, 12), '12') == bytes",
        "DescodificarStr64(CodificarStr64(bytes)) == bytes",
        "Descompactar64(Compactar64(bytes)) == bytes"
    ],
    DatetimeUtil: [
        "DataMaisDias('28-02-2004', 2) == '01-03-2004'", "QueAno('31-12-49') == 2049",
        "QueDia('31-12-49') == 31", "QueMes('31-12-49') == 12",
        "DiasEntreDatas('01-01-2004', '01-03-2004') == 60", "UltimoDiaDoMes(2, 2004) == 29",
        "ComparaDatas('02-01-2004', '01-01-2004') == 1",
        "DataEntre('01-01-2004', '01-01-2004', '02-01-2004')", "DiaDaSemana(2004, '2', 29) == 1",
        "DiasDoMes(2100, 2) == 29", "StandardStrData('31/12/2004') == '31-12-2004'",
        "HHMM('9:05') == 905", "StrHora(905) == '09:05'", "FmtData == 'dd-mm-yyyy'",
        "VerificaData('31-04-2004') == 6", "Contador.Horas() >= -1"
    ],
    TickCount: [
        "Iniciar(), made('SysUtil').Esperar(1100), Parar(), (kept = Milisegundos()) >= 1100",
        "Milisegundos() == kept", "Segundos() == Math.floor(kept / 1000)",
        "Minutos() + Horas() == 0", "Texto().indexOf(Segundos() + ' Segundo') == 0",
        "Texto('hh:nn:s') == '00:00:' + Segundos()"
    ],
    FileUtil: [
        "EscreverFicheiro(note, bytes)", "LerFicheiro(note) == bytes", "ExisteFich(note) == -1",
        "ExisteFich(folder) == 0", "TestarPermissaoEscrita(note)", "ProbablyIsFile(note)",
        "QuantosFich(folder + '/*.t?t') == 1", "QuantosFicheiros(folder + '/*', undefined) == 1",
        "EncriptarParaFicheiro(bytes, kept = folder + '/hidden', 'sesame')",
        "DesencriptarDeFicheiro(kept, 'SESAME') == bytes",
        "EncriptarFicheiroParaFicheiro(note, kept)", "DesencriptarFicheiroParaFicheiro(kept, note)",
        "ApagaFicheiro(kept) == -1", "ApagaFicheiro(kept) == 0",
        "ApagaFicheiro(NomeFichTemporario()) == -1",
        "SeparaPercursoNomeExt('C:/a.b', 0, 0, 0) == undefined",
        "SeparaPercursoNome('C:/a.b', 0, 0) == undefined",
        "QualPercurso('C:/Data/a.txt') == 'C:/Data/'", "QualFicheiro('C:/a.txt') == 'a.txt'",
        "QualExt('a.txt') == 'txt'", "InfoDaPasta(folder).Files.Count == 1",
        "InfoDaPasta(note + '/none') == null", "InfoDeDrive('c').DriveLetter == 'C'",
        "InfoDeDrive('Q:/') == null", "InfoDeFicheiro(note, null, null, null) == undefined",
        "DrivesNoSistema().Item('c').DriveLetter == 'C'", "SerialNumberEx(folder).length == 8",
        "TransformarEmUNC(folder) == folder", [notImplemented, "UnRAR(note)"],
        // On a machine with a screen this would wait for somebody.
        "QueFicheiro('Which?', true, 'a.txt', dialog) == 'C:/b.txt'"
    ],
    DirUtil: [
        "files.FolderExists(SystemDirectory)", "files.FolderExists(UserDirectory)",
        "files.FolderExists(AllUserAppDataDirectory)",
        "files.FolderExists(ProgramFilesCommonDirectory)",
        "files.FolderExists(ProgramFilesDirectory)", "files.FolderExists(TempDirectory)"
    ],
    SysUtil: [
        "Directories.TempDirectory != ''", "Geo.GeoISO2.length == 2",
        "Play.MailSound() == undefined", "Notifications.Count == 6", "EventHistory.Count == 0",
        "Pulsar.Index == 0", "SaveMyError(1, 3021, 'Sem registo', 'Lista') == undefined",
        "MyError(5) == '(Lista) 3021 - Sem registo'", "ErroDeRede(3186)", "Apitar() == undefined",
        "kept = new Date(), Esperar(120), new Date() - kept >= 100",
        "AppYear == new Date().getFullYear()", "kept = 0, PoeFoco(box) == -1", "PoeFoco(box) == 0",
        "(kept = made('Collection')).Add('Lisboa', 'capital'), ExisteNaCollection(kept, 'CAPITAL')",
        "ClearCollection(kept), kept.Count == 0", "!XsltTransform('<a>x</a>', '<none/>', '')",
        "CurrentMachineName() == environment('COMPUTERNAME')",
        "LoginDoUtilizador == environment('USERNAME')",
        "RegistryLerValorLocalMachine(key, 'none') == ''",
        "RegistryLerValorLocalUser(key, 'none') == ''",
        "CriarIdentificador() != CriarIdentificador()", "TPPixelX > 0", "TPPixelY > 0",
        "NomeDoUtilizador != ''", "DominioDoUtilizador != ''",
        "IdentificadorDoUtilizador.indexOf('S-1-5-') == 0", "!StartService(service)",
        "!StopService(service, '')", "ServiceStatus(service) == 0", "ServiceStatus('Spooler') > 0",
        "!ServiceIsRunning(service)", "!ServiceIsStopped(service)",
        "IsConnectedToInternet() != undefined", "GetOSVersion().split('.').length == 3",
        "Is64Bit() != undefined", "GetNetworkIP() != undefined"
    ],
    GeoUtil: [
        "OSGeoISO3.length == 3", "OSGeoOfficialName != ''", "OSGeoNation > 0", "GeoLanguageID > 0",
        "(GeoLatitude == '') == (GeoLongitude == '')",
        "GeoRFC1766.slice(-3) == '-' + GeoISO2.toLowerCase()"
    ],
    PlayUtil: [
        "MailSound() == undefined", "AlertSound() == undefined",
        "SystemNotificationSound() == undefined", "RecycleSound() == undefined",
        "CriticalStopSound() == undefined", "DeviceConnectSound() == undefined",
        "DeviceDisconnectSound() == undefined", "DeviceFailSound() == undefined"
    ],
    RegistryUtil: [
        "SetRegistryValue(HKCU, key, 'printer', 'HP') == 0",
        "GetRegistryValue(HKCU, key, 'printer', '') == 0",
        "made('SysUtil').RegistryLerValorLocalUser(key, 'printer') == 'HP'",
        "GetFirstKey(HKCU, key, '') == 0", "GetNextKey(HKCU, key, '') == 259",
        "DeleteValue(HKCU, key, 'printer') == 0", "DeleteKey(HKCU, key, 'one') == 0",
        "DeleteKey(HKCU, 'Software', 'VelaUtilTestClient') == 0"
    ],
    gUtil: [
        "gMD5('abc') == made('MathUtil').CriarMD5('abc')", "gParteDecimal(12.345, 2) == 35",
        "gDataEntre('02-01-2004', '01-01-2004', '02-01-2004')", "gDiaDaSemana(2004, 2, 29) == 1",
        "gDiasDoMes(2100, 2) == 29", "gStandardStrData('x') == 'x'", "g2expX(24) == 16777216",
        "gBitTrue(5, 3)", "gMax(2, 10) == 10", "gMin(2, 10) == 2",
        "kept = made('Collection'), kept.Add(1, 'um') == undefined", "gExisteNaCollection(kept, 'UM')",
        "gDestroiCollection(kept), kept.Count == 0", "gEscreverFicheiro(note, 'linha')",
        "gLerFicheiro(note) == 'linha'", "gInfoDaPasta(folder).Path == folder",
        "gDrivesNoSistema().Count > 0", "gInfDeDrive('c').DriveLetter == 'C'",
        "gCurrentMachineName() == made('SysUtil').CurrentMachineName()",
        "gTransformarEmUNC(note) == note", "gGetPathInfo(note, null, null, null) == undefined",
        "gLerValorLocalMachine(key, 'none') == ''",
        "gStrCharValidos('12,5 EUR', '0123456789,') == '12,5'", "gCopyStr(1, 2) == undefined",
        "gHora('9:05') == 905"
    ],
    // Without a message loop nothing is sent or received here.
    cTCP: [
        "Inicializar('5001', 5002, '127.0.0.1'), portaLocal == 5001", "portaRemota == 5002",
        "Servidor == '127.0.0.1'", "Inicializar(), IniciarEscuta()", "StatusPorta == 2",
        "Inicializar(0, portaLocal, '127.0.0.1'), EnviarMsg('x')", "!MsgEnviada",
        "TcpCom = null, StatusPorta == 0"
    ],
    Collection: [
        "Add('a', 'key'), Add('c'), Count == 2", "Item('KEY') == 'a'", "Remove(2), Count == 1",
        "all(object) == 'a'"
    ],
    KeyValue: ["ObjValue = article, ObjValue.Code == 12"],
    Switches: [
        "FromString('prog /user=ana /log / out=a=b'), all(object, 'Ref') == 'userlogout'",
        "Item('LOG').LngValue == 2", "FindByRef('[!a-n]*').Count == 2",
        "(kept = made('KeyValue')).Group = 'Own', Add(kept), FindByGroup('OWN').Count == 1",
        "Remove(kept), Count == 3", "Clear(), Count == 0"
    ],
    Serializer: [
        "Serialize(article, 'Item', '@Code') == '<Item code=\"12\"/>'",
        "DeSerialize(article, '<Item Code=\"7\"/>', '@Code'), article.Code == 7",
        "kept = CreateSimpleElement(document, 'Price', 5), kept.text == '5'",
        "document.appendChild(kept), ReadSimpleElement(document, '/Price') == '5'"
    ],
    BubbleSort: ["Sort(digits), digits.text.join('') == '11234569'"],
    Quadrado: [
        "Lado = 1.5, Area == 2.25", "Perimetro == 6", "Soma(null, 2) == 4.25",
        "Soma(multiplier, 2) == 4.5"
    ],
    Notifications: [
        "(kept = Publish('my:first')).Tag == 'MY:FIRST'",
        "Welcome(follower), kept.Subscribers.Count == 1", "kept.Notify('go') == false",
        "walk('Subscribers', kept.Subscribers)", "Goodbye(follower), kept.Subscribers.Count == 0",
        "ItemByTAG(' My:First ').Id == kept.Id", "Item(7).Id == kept.Id",
        "ItemByID(6).Tag == OnPulse.Tag", "Remove('my:first'), Count == 6",
        "all(object, 'Id') == '123456'", "OnWelcome.Id == 1", "OnGoodbye.Id == 2",
        "OnClosingApplication.Id == 3", "OnApplicationResize.Id == 4", "OnOpeningDatabase.Id == 5"
    ],
    NotificationEventArgs: [
        "NotificationID > 1000", "NotificationTAG == 'MY:FIRST'", "Parameter == 'go'", "!Cancel",
        "Cancel = true"
    ],
    Subscribers: [
        "Item(1) != null", "Add(follower), Count == 2", "Remove(2), Count == 1",
        "all(object) != ''"
    ],
    Notification: [],
    INotification: ["Subscribers.Count == 0", "Notify()"],
    Pulsar: [
        "CreatePulsar().PulseInterval == 60000", "Index > 0", "StartPulse(), !Stopped",
        "StopPulse(), Stopped", "Dispose() == undefined"
    ],
    EventHistory: [
        "Add(happening), Count == 1", "FindItem(happening).EventSource == 3",
        "FindItems(7).Count == 1", "FindItems(7, 4).Count == 0", "all(object, 'EventKey') == 'a'",
        "Remove(happening), Count == 0", "RemoveAll() == undefined"
    ],
    Preferences: ["walk('UPUtil', MyPreferences.NewPreferences())"],
    UPUtil: [
        "NewPreferences() != null", "walk('UPDataSources', ActiveDataSources)",
        "StartUPM('sales', 'ana') == -1", "walk('UPManager', manager = ActiveUPM)",
        "walk('UPValueUtil', Values)", "walk('UPWindowUtil', Windows)",
        "walk('UPPrinterUtil', Printers)", "walk('RPManager', made('RPManager'))",
        "StopUPM(), !manager.Loaded"
    ],
    UPDataSources: [
        "LocalSource = article, LocalSource = folder + '/my.up1.xml', LocalSource != ''",
        "SharedSource = article, SharedSource = folder + '/my.up2.xml', SharedSource != ''",
        "SessionSource = article, SessionSource = '', SessionSource == ''"
    ],
    UPManager: [
        "Loaded", "HasRegisteredSections", "IsRegistered('kv')", "ApplicationId == 'SALES'",
        "UserId == 'ANA'", "Load()",
        "PreferenceSections = PreferenceSections, walk('UPSections', PreferenceSections)", "Save()",
        "!Delete('nobody')"
    ],
    UPSections: [
        "Count == 4", "all(object, 'Id') == 'PPUIDPKV'", "walk('IUPSection', section('DP'))",
        "kept = section('DP'), Remove('DP'), Count == 3", "Add(kept), Count == 4"
    ],
    IUPSection: [
        "Id = 'ignored', Id == 'DP'", "Description = '', Description == 'Default Path'",
        "Properties == '[path][file][ext]'", "kept = CreateItem(), walk('UPItems', Items)",
        "DataSourceManager = DataSourceManager, walk('IUPDataSource', DataSourceManager)"
    ],
    UPItems: [
        "Add(kept, 'INVOICES', 'EXPORT'), Item('invoices', 'export') != null", "Count == 1",
        "all(object, 'Id') == 'INVOICES'", "Remove('invoices', 'export'), Count == 0",
        "Clear() == undefined"
    ],
    IUPDataSource: [
        "!Save('SALES', 'ANA', null)", "!Load('SALES', 'ANA', null)",
        "DataSource = article, DataSource == folder + '/my.up2.xml'"
    ],
    UPValueUtil: [
        "SaveValue('company', 'general', '7'), GetValue('COMPANY', 'general') == '7'",
        "SaveDefaultPath('invoices', 'export', 'C:/', '', 'csv') == undefined",
        "LoadDefaultPath('invoices', 'export', '')"
    ],
    UPWindowUtil: ["SaveWindowPos(form), form.Left = 0, LoadWindowPos(form) && form.Left == 300"],
    UPPrinterUtil: [
        "GetCopies(1, 'none') == 0", "GetPrinterDescription(1, 'none') == ''",
        "!UsePrintingPreferences(1, 'none', printer, 2) && printer.Copies == 2",
        // With a printer and a screen this would wait for somebody.
        "!UISetPrintingPreferences(0, 1, 'none', null)"
    ],
    RPManager: [
        "Load(manager)", "AddItem(made('RPItem')), Items.Count == 1", "GetItem('@@0', '') != null",
        "Clear(), Items.Count == 0", "walk('RPSection', manager.PreferenceSections('RP'))"
    ],
    RPSection: [
        "Id = 'ignored', Id == 'RP'", "Description = '', Description == 'Report Parameters'",
        "Items.Count == 0", "Properties == '[view][field][mode][value]'", "CreateItem().Mode == 0",
        "(DataSourceManager = DataSourceManager) != null"
    ],
    IUPItem: ["Id = 'a', Group = 'b', SearchKey == 'A@B'"],
    KVItem: [], DPItem: [], PPItem: [], UIItem: [], Security: [],
    RPItem: ["View = 'V', Field = 'F', Mode = 2, Id = 'ignored', Id == 'V@F@2'"]
};

function made(name) { return new ActiveXObject("VelaUtil10." + name); }

// An array as other languages pass it.
function list() {
    var entries = new ActiveXObject("Scripting.Dictionary");
    for (var i = 0; i < arguments.length; ++i) entries.Add(i, arguments[i]);
    return entries.Items();
}

// One property of each entry, or the entries themselves, one behind the other.
function all(entries, property) {
    var text = "";
    for (var e = new Enumerator(entries); !e.atEnd(); e.moveNext()) {
        text += property ? e.item()[property] : e.item();
    }
    return text;
}

function holds(object, expression) { with (object) { return eval(expression); } }

function check(what, given, wanted) {
    if (given !== wanted) throw new Error(what + " is '" + given + "', not '" + wanted + "'");
}

// The list of all members: by class its kind, and by member the types of its let, get and so on.
function readList(path) {
    var lines = files.OpenTextFile(path).ReadAll().split(/\r?\n/), classes = {}, current;
    for (var i = 0; i < lines.length; ++i) {
        var words = lines[i].match(/\w+/g);
        if (lines[i].match(/^\w+ \w+$/)) current = { kind: words[0], members: {} };
        if (lines[i].match(/^(creatable|global|noncreatable) /)) classes[words[1]] = current;
        if (!lines[i].match(/^  (method|get|let|set) /)) continue;
        current.members[words[1]] = current.members[words[1]] || {};
        current.members[words[1]][words[0]] = words[2];
    }
    return classes;
}

// True, so that a walk can be part of another one.
function walk(name, object) {
    var walked = walks[name].join(" ").replace(/all\(object/g, "NewEnum");
    for (var i = 0; i < walks[name].length; ++i) {
        at = name + ": " + walks[name][i];
        step(name, object, walks[name][i]);
    }
    for (var member in catalogue[name].members) {
        var types = catalogue[name].members[member];
        if (walked.match(new RegExp("\\b" + member + "\\b"))) continue;
        check(name + "." + member + " called", Boolean(types.let && types.get), true);
        var value = { string: "Ab", bool: true, double: 2.5 }[types.let] || 2;
        object[member] = value;  // identities come back in capitals
        var found = String(object[member]).toUpperCase();
        check(name + "." + member, found, String(value).toUpperCase());
    }
    return catalogue[name].walked = true;
}

function step(name, object, expression) {
    if (typeof expression === "string") {
        check(name + ": " + expression, Boolean(holds(object, expression)), true);
        return;
    }
    var error = 0;
    try {
        holds(object, expression[1]);
    } catch (e) {
        error = e.number & 0xFFFF;
    }
    check(name + ": error of " + expression[1], error, expression[0]);
}

function creatable(name) {
    try {
        made(name);
    } catch (e) {
        return false;
    }
    return true;
}

function run() {
    var shell = new ActiveXObject("WScript.Shell");
    shell.RegWrite("HKCU\\" + key + "\\one\\", "");
    for (var name in catalogue) {
        var offered = catalogue[name].kind !== "noncreatable" && !name.match(later);
        check(name + " creatable", creatable(name), offered);
        if (offered) walk(name, made(name));
    }
    walk("INotification", made("Notification"));
    walk("IUPItem", made("KVItem"));
    walk("Notifications", made("SysUtil").Notifications);
    walk("Pulsar", made("SysUtil").Pulsar.CreatePulsar(250));
    for (name in catalogue) {
        var needless = name.match(later) || name.match(ofCallers);
        check(name + " walked", Boolean(catalogue[name].walked || needless), true);
    }
}

var here = files.GetParentFolderName(WScript.ScriptFullName);
var catalogue = readList(here + "\\..\\frame\\catalogue.txt");
files.CreateFolder(folder);
var failure = null;
try {
    run();
} catch (e) {
    failure = e;
}
files.DeleteFolder(folder, true);
if (failure) {
    WScript.Echo("catalogue.js: " + failure.number + " " + failure.message + " at " + at);
    WScript.Quit(1);
}
WScript.Echo("catalogue.js: passed");
