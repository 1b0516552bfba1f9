// An object of the script stands for the printer; choices kept by one run are applied in the next.
var files = new ActiveXObject("Scripting.FileSystemObject");
var folder = files.BuildPath(files.GetSpecialFolder(2).Path, files.GetTempName());
var failure = "";

function check(what, given, wanted) {
    if (given !== wanted) throw new Error(what + " is '" + given + "', not '" + wanted + "'");
}

function Printer() {
    this.DeviceName = "standard";
    this.Copies = 5;
    this.Orientation = 1;
    this.PaperBin = 3;
    this.PaperSize = 9;
    this.SetPrinter = function (name) {
        this.DeviceName = name;
        return true;
    };
    this.SetProperties = function (copies, orientation, bin, size) {
        this.set = [this.DeviceName, copies, orientation, bin, size].join(" ");
        return true;
    };
}

function start(preferences) {
    preferences.ActiveDataSources.LocalSource = files.BuildPath(folder, "my.up1.xml");
    preferences.ActiveDataSources.SharedSource = files.BuildPath(folder, "my.up2.xml");
    preferences.StartUPM("sales", "ana");
}

function keep(preferences) {
    var section = preferences.ActiveUPM.PreferenceSections("PP");
    var item = section.CreateItem();
    item.PrinterName = "Front Desk";
    item.Copies = 3;
    item.Orientation = 2;
    item.PaperBin = 7;
    item.PaperSize = 11;
    section.Items.Add(item, "INVOICE", "1");
}

function use(printers) {
    check("a description", printers.GetPrinterDescription(1, "invoice"),
          "front desk (3 c\u00F3pias)");
    var printer = new Printer();
    check("defaults left out", printers.UsePrintingPreferences(1, "invoice", printer), true);
    check("what was set", printer.set, "FRONT DESK 3 2 7 11");
    check("a default that wins",
          printers.UsePrintingPreferences(1, "invoice", printer, 8, 0, true), true);
    check("what was set", printer.set, "FRONT DESK 8 2 7 11");
    printer = new Printer();
    check("nothing kept", printers.UsePrintingPreferences(3, "invoice", printer, 2), false);
    check("what was set", printer.set, "standard 2 1 3 9");

    check("no printer", printers.UsePrintingPreferences(1, "invoice", null), false);
    check("an object that is no printer", printers.UsePrintingPreferences(1, "invoice", {}), false);
    printer.SetProperties = function () { throw new Error("out of paper"); };
    check("a printer that fails", printers.UsePrintingPreferences(1, "invoice", printer), false);
}

files.CreateFolder(folder);
try {
    var preferences = new ActiveXObject("VelaUtil10.Preferences").MyPreferences;
    start(preferences);
    keep(preferences);
    preferences.StopUPM();
    var again = preferences.NewPreferences();
    start(again);
    use(again.Printers);
    again.StopUPM();
} catch (e) {
    failure = e.message;
}
files.DeleteFolder(folder, true);
if (failure !== "") {
    WScript.Echo("script_printer.js: " + failure);
    WScript.Quit(1);
}
WScript.Echo("script_printer.js: passed");
