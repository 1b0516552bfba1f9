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
    this.calls = "";
}
Printer.prototype.SetPrinter = function (name) {
    this.calls += "SetPrinter ";
    this.DeviceName = name;
    return true;
};
Printer.prototype.SetProperties = function (copies, orientation, bin, size) {
    this.calls += "SetProperties ";
    this.Copies = copies;
    this.Orientation = orientation;
    this.PaperBin = bin;
    this.PaperSize = size;
    return true;
};

function settings(printer) {
    return [printer.DeviceName, printer.Copies, printer.Orientation, printer.PaperBin,
            printer.PaperSize].join(" ");
}

function start(preferences) {
    preferences.ActiveDataSources.LocalSource = files.BuildPath(folder, "my.up1.xml");
    preferences.ActiveDataSources.SharedSource = files.BuildPath(folder, "my.up2.xml");
    preferences.StartUPM("sales", "ana");
    return preferences.Printers;
}

function keep(preferences, type, reference, name, copies) {
    var section = preferences.ActiveUPM.PreferenceSections("PP");
    var item = section.CreateItem();
    check("copies of a new item", item.Copies, 1);
    check("direction of a new item", item.Orientation, 1);
    item.PrinterName = name;
    item.Copies = copies;
    item.Orientation = 2;
    item.PaperBin = 7;
    item.PaperSize = 11;
    section.Items.Add(item, reference, "" + type);
}

function use(printers, type, reference, copies, orientation, overide) {
    var printer = new Printer();
    var applied = printers.UsePrintingPreferences(type, reference, printer, copies, orientation,
                                                  overide);
    return applied + ": " + settings(printer) + ": " + printer.calls;
}

function main() {
    var preferences = new ActiveXObject("VelaUtil10.Preferences").MyPreferences;
    var printers = start(preferences);
    keep(preferences, 1, "INVOICE", "Front Desk", 3);
    keep(preferences, 2, "INVOICE", "Back Office", 1);
    keep(preferences, 1, "LABEL", "", 4);
    preferences.StopUPM();

    // Its facades alone would not keep it running.
    var again = preferences.NewPreferences();
    printers = start(again);
    check("copies", printers.GetCopies(1, "invoice"), 3);
    check("of another type", printers.GetCopies(2, "invoice"), 1);
    check("of none", printers.GetCopies(3, "invoice"), 0);
    check("description", printers.GetPrinterDescription(1, "invoice"),
          "front desk (3 c\u00F3pias)");
    check("of one copy", printers.GetPrinterDescription(2, "invoice"), "back office");
    check("of none", printers.GetPrinterDescription(3, "invoice"), "");

    var both = "SetPrinter SetProperties ";
    check("kept", use(printers, 1, "invoice", 0, 0, false), "true: FRONT DESK 3 2 7 11: " + both);
    check("kept, with defaults", use(printers, 1, "invoice", 8, 1, false),
          "true: FRONT DESK 3 2 7 11: " + both);
    check("defaults that win", use(printers, 1, "invoice", 8, 1, true),
          "true: FRONT DESK 8 1 7 11: " + both);
    check("one default that wins", use(printers, 1, "invoice", 8, 0, true),
          "true: FRONT DESK 8 2 7 11: " + both);
    check("no printer's name", use(printers, 1, "label", 0, 0, false),
          "true: standard 4 2 7 11: SetProperties ");
    check("nothing kept", use(printers, 3, "invoice", 0, 0, false),
          "false: standard 5 1 3 9: SetProperties ");
    check("nothing kept, with defaults", use(printers, 3, "invoice", 2, 2, false),
          "false: standard 2 2 3 9: SetProperties ");
    check("no printer", printers.UsePrintingPreferences(1, "invoice", null), false);

    var printer = new Printer();
    check("defaults left out", printers.UsePrintingPreferences(1, "invoice", printer), true);
    check("what was set", settings(printer), "FRONT DESK 3 2 7 11");

    printer = new Printer();
    printer.SetProperties = function () { throw new Error("out of paper"); };
    check("a printer that fails", printers.UsePrintingPreferences(1, "invoice", printer), false);
    check("an object that is no printer", printers.UsePrintingPreferences(1, "invoice", {}), false);
    again.StopUPM();
}

files.CreateFolder(folder);
try {
    main();
} catch (e) {
    failure = e.message;
}
files.DeleteFolder(folder, true);
if (failure !== "") {
    WScript.Echo("script_printer.js: " + failure);
    WScript.Quit(1);
}
WScript.Echo("script_printer.js: passed");
