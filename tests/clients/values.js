// What JScript hands to the library and gets back: its numbers and objects, Enumerator, windows.
var files = new ActiveXObject("Scripting.FileSystemObject");
var folder = files.BuildPath(files.GetSpecialFolder(2).Path, files.GetTempName());
var failure = "";

function check(what, given, wanted) {
    if (given !== wanted) throw new Error(what + " is '" + given + "', not '" + wanted + "'");
}

function each(collection, visit) {
    for (var e = new Enumerator(collection); !e.atEnd(); e.moveNext()) visit(e.item());
}

function start(preferences) {
    preferences.ActiveDataSources.LocalSource = files.BuildPath(folder, "my.up1.xml");
    preferences.ActiveDataSources.SharedSource = files.BuildPath(folder, "my.up2.xml");
    check("StartUPM", preferences.StartUPM("sales", "ana"), -1);
}

function listing(manager) {
    var text = "";
    each(manager.PreferenceSections, function (section) {
        text += section.Id + ":";
        each(section.Items, function (item) { text += " " + item.SearchKey; });
        text += "; ";
    });
    return text;
}

function form(left) {
    return { Name: "Main", Visible: true, Left: left, Top: 150, Width: 6000, Height: 4500,
             WindowState: 0 };
}

function entries() {
    var letters = new ActiveXObject("VelaUtil10.Collection");
    letters.Add({ name: "of the script" }, "object");
    letters.Add("b", "Key B");
    letters.Add("c");
    check("its own object", letters("object").name, "of the script");
    check("by computed place", letters(6 / 3), "b");
    letters.Remove("object");
    var e = new Enumerator(letters);
    letters.Remove("key b");
    e.moveNext();
    check("after a removal", e.item(), "c");
    e.moveFirst();
    check("from the start", e.item(), "c");
}

function save(preferences) {
    preferences.Values.SaveValue("whole", "types", -70000);
    preferences.Values.SaveValue("computed", "types", 21 / 3);
    preferences.Values.SaveDefaultPath("invoices", "export", "C:\\Data\\");
    preferences.Windows.SaveWindowPos(form(300));
    preferences.Values.SaveValue("whole", "types", -70001);
    check("a replaced item is last", listing(preferences.ActiveUPM),
          "PP:; UI: MAIN@; DP: INVOICES@EXPORT; KV: COMPUTED@TYPES WHOLE@TYPES; ");
}

function read(preferences) {
    check("whole", preferences.Values.GetValue("whole", "types"), "-70001");
    check("computed", preferences.Values.GetValue("COMPUTED", "Types"), "7");
    check("default", preferences.Values.GetValue("none", "types", 5), "5");
    var sections = preferences.ActiveUPM.PreferenceSections;
    check("by default members", sections("DP").Items("invoices", "export").Path, "C:\\Data\\");
    var moved = form(0);
    check("window", preferences.Windows.LoadWindowPos(moved), true);
    check("its left", moved.Left, 300);
    check("under another id", preferences.Windows.LoadWindowPos(moved, "Other"), false);
    var values = sections("kv").Items, seen = "";
    each(values, function (item) {
        seen += item.Value;
        values.Remove(item.Key, item.Group);
    });
    check("removed while walking", seen + values.Count, "7-700010");
}

files.CreateFolder(folder);
try {
    entries();
    var preferences = new ActiveXObject("VelaUtil10.Preferences").MyPreferences;
    start(preferences);
    save(preferences);
    preferences.StopUPM();
    var again = preferences.NewPreferences();
    start(again);
    read(again);
    again.StopUPM();
} catch (e) {
    failure = e.message;
}
files.DeleteFolder(folder, true);
if (failure !== "") {
    WScript.Echo("values.js: " + failure);
    WScript.Quit(1);
}
WScript.Echo("values.js: passed");
