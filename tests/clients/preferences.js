// Printers and report parameters, which one run of a program keeps and the next one finds. An object
// of the script stands for the printer.
var files = new ActiveXObject("Scripting.FileSystemObject");
var folder = files.BuildPath(files.GetSpecialFolder(2).Path, files.GetTempName());
var failure = null;

function check(what, given, wanted) {
    if (given !== wanted) throw new Error(what + " is '" + given + "', not '" + wanted + "'");
}

function filled(object, fields) {
    for (var name in fields) object[name] = fields[name];
    return object;
}

function start(preferences, user) {
    preferences.ActiveDataSources.LocalSource = files.BuildPath(folder, "my.up1.xml");
    preferences.ActiveDataSources.SharedSource = files.BuildPath(folder, "my.up2.xml");
    preferences.StartUPM("sales", user);
    return preferences;
}

function keepPrinter(preferences, reference, name, copies) {
    var section = preferences.ActiveUPM.PreferenceSections("PP");
    var item = filled(section.CreateItem(), {
        PrinterName: name, Copies: copies, Orientation: 2, PaperBin: 7, PaperSize: 11 });
    section.Items.Add(item, reference, "2");
}

// Notes how it is set up; "GONE" is not installed.
function Printer() {
    var own = { DeviceName: "own", Copies: 4, Orientation: 2, PaperBin: 5, PaperSize: 6, set: "" };
    own.SetPrinter = function (name) {
        own.set += name + ":";
        return name !== "GONE";
    };
    own.SetProperties = function (copies, orientation, bin, size) {
        own.set += [copies, orientation, bin, size].join(" ");
        return true;
    };
    return own;
}

function usePrinters(printers) {
    var table = [
        // Kind, reference, the defaults and whether they win; whether found, and what is set.
        [2, "invoice", 9, 1, false, "true HP \u00C7:3 2 7 11"],
        [2, " Invoice ", 9, 1, true, "true HP \u00C7:9 1 7 11"],
        [2, "letter", 9, 1, false, "true 1 2 7 11"],
        [1, "invoice", 9, 1, false, "false 9 1 5 6"],
        [2, "none", 0, 0, true, "false 4 2 5 6"],
        // The paper codes of a printer that is gone mean nothing to another one.
        [2, "label", 9, 0, false, "false GONE:9 2 5 6"]
    ];
    for (var i = 0; i < table.length; ++i) {
        var row = table[i], printer = Printer();
        var found =
            printers.UsePrintingPreferences(row[0], row[1], printer, row[2], row[3], row[4]);
        check(row[1], found + " " + printer.set, row[5]);
    }
    printer.SetProperties = function () { throw new Error("out of paper"); };
    check("a printer that fails", printers.UsePrintingPreferences(2, "invoice", printer), false);
    check("an object that is no printer", printers.UsePrintingPreferences(2, "invoice", {}), false);
}

function described(printers, reference) {
    return printers.GetPrinterDescription(2, reference) + "/" + printers.GetCopies(2, reference);
}

// An undefined document is that of the preferences.
function loaded(preferences, document) {
    var parameters = new ActiveXObject("VelaUtil10.RPManager");
    check("Load", parameters.Load(preferences.ActiveUPM, document), true);
    return parameters;
}

function add(parameters, view, field, mode, value) {
    parameters.AddItem(filled(new ActiveXObject("VelaUtil10.RPItem"), {
        View: view, Field: field, Mode: mode, Value: value, Group: "monthly" }));
}

function listed(parameters) {
    var list = "";
    for (var e = new Enumerator(parameters.Items); !e.atEnd(); e.moveNext()) {
        list += e.item().Id + "=" + e.item().Value + ";";
    }
    return list;
}

function keepParameters(preferences) {
    var parameters = new ActiveXObject("VelaUtil10.RPManager"), added = true;
    try { add(parameters, "V1", "Lost", 0, ""); } catch (e) { added = false; }
    check("added before Load", added, false);
    parameters = loaded(preferences);
    add(parameters, "V1", "Data", 2, "01-01-2024");
    add(parameters, "V1", "Name", -1, "A*");
    add(parameters, "V1", "Data", 2, "31-12-2024");
    check("an item", parameters.GetItem("v1@data@2", "MONTHLY").Value, "31-12-2024");
    check("in a collection", parameters.Items("V1@Name@-1@MONTHLY").Value, "A*");
    start(preferences, "rui");
    check("of another user", listed(loaded(preferences)), "");
    start(preferences, "ana");
}

function readParameters(preferences) {
    var parameters = loaded(preferences);
    check("read back", listed(parameters), "V1@Name@-1=A*;V1@Data@2=31-12-2024;");
    parameters.Clear();
    preferences.ActiveUPM.Save();
    add(loaded(preferences, files.BuildPath(folder, "own.xml")), "V2", "", 0, "x");
}

function hasParameters(name) {
    var stream = files.OpenTextFile(files.BuildPath(folder, name));
    var content = stream.ReadAll();
    stream.Close();
    return content.indexOf("RP_Item") >= 0;
}

files.CreateFolder(folder);
try {
    var preferences = start(new ActiveXObject("VelaUtil10.Preferences").MyPreferences, "ana");
    keepPrinter(preferences, "INVOICE", "Hp \u00E7", 3);
    keepPrinter(preferences, "LETTER", "", 1);
    keepPrinter(preferences, "LABEL", "gone", 2);
    keepParameters(preferences);
    preferences.StopUPM();
    check("kept", hasParameters("my.up2.xml"), true);
    var again = start(preferences.NewPreferences(), "ana");
    usePrinters(again.Printers);
    check("invoice", described(again.Printers, "invoice"), "hp \u00E7 (3 c\u00F3pias)/3");
    check("letter", described(again.Printers, "letter"), "/1");
    readParameters(again);
    again.StopUPM();
    check("after the stop", described(again.Printers, "invoice"), "/0");
    check("cleared", hasParameters("my.up2.xml"), false);
    check("a document of their own", hasParameters("own.xml"), true);
} catch (e) {
    failure = e;
}
files.DeleteFolder(folder, true);
if (failure) {
    WScript.Echo("preferences.js: " + failure.message + " " + failure.number);
    WScript.Quit(1);
}
WScript.Echo("preferences.js: passed");
