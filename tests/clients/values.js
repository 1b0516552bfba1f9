// What a JScript program does with preferences: values of all its types, windows, a second start.
var files = new ActiveXObject("Scripting.FileSystemObject");
var folder = files.BuildPath(files.GetSpecialFolder(2).Path, files.GetTempName());
var failure = "";

function check(what, given, wanted) {
    if (given !== wanted) throw new Error(what + " is '" + given + "', not '" + wanted + "'");
}

function start(preferences) {
    preferences.ActiveDataSources.LocalSource = files.BuildPath(folder, "my.up1.xml");
    preferences.ActiveDataSources.SharedSource = files.BuildPath(folder, "my.up2.xml");
    check("StartUPM", preferences.StartUPM("sales", "ana"), -1);
}

function form() {
    return { Name: "MainForm", Visible: true, Left: 300, Top: 150, Width: 6000, Height: 4500,
             WindowState: 0 };
}

function save(preferences) {
    preferences.Values.SaveValue("text", "types", "seven");
    preferences.Values.SaveValue("whole", "types", 7);
    preferences.Values.SaveValue("negative", "types", -70000);
    preferences.Values.SaveValue("computed", "types", 21 / 3);
    preferences.Values.SaveDefaultPath("invoices", "export", "C:\\Data\\");
    preferences.Windows.SaveWindowPos(form());
    var hidden = form();
    hidden.Name = "Hidden";
    hidden.Visible = false;
    preferences.Windows.SaveWindowPos(hidden);
}

function read(preferences) {
    check("text", preferences.Values.GetValue("TEXT", "Types"), "seven");
    check("whole", preferences.Values.GetValue("whole", "types"), "7");
    check("negative", preferences.Values.GetValue("negative", "types"), "-70000");
    check("computed", preferences.Values.GetValue("computed", "types"), "7");
    check("default", preferences.Values.GetValue("none", "types", 5), "5");
    check("no path", preferences.Values.LoadDefaultPath("none", "export", ""), false);
    check("a path", preferences.Values.LoadDefaultPath("invoices", "export", ""), true);

    var section = preferences.ActiveUPM.PreferenceSections("DP");
    check("path by default properties", section.Items("invoices", "export").Path, "C:\\Data\\");

    var moved = form();
    moved.Left = 0;
    moved.Width = 10;
    check("window", preferences.Windows.LoadWindowPos(moved), true);
    check("its left", moved.Left, 300);
    check("its width", moved.Width, 6000);
    check("under another id", preferences.Windows.LoadWindowPos(moved, "Other"), false);
    check("under its id", preferences.Windows.LoadWindowPos(moved, "mainform", ""), true);
    check("hidden", preferences.Windows.LoadWindowPos(moved, "Hidden"), false);
}

files.CreateFolder(folder);
try {
    var preferences = new ActiveXObject("VelaUtil10.Preferences").MyPreferences;
    start(preferences);
    save(preferences);
    read(preferences);
    preferences.StopUPM();
    check("after stop", preferences.Values.GetValue("text", "types", "none"), "");

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
