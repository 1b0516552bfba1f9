// What JScript hands to the library and gets back: its numbers and objects, Enumerator, windows.
function check(what, given, wanted) {
    if (given !== wanted) throw new Error(what + " is '" + given + "', not '" + wanted + "'");
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

function preferences() {
    var context = new ActiveXObject("VelaUtil10.Preferences").MyPreferences.NewPreferences();
    context.ActiveDataSources.LocalSource = "";
    context.ActiveDataSources.SharedSource = "";
    context.StartUPM("sales", "ana");
    context.Values.SaveValue("whole", "types", -70001);
    context.Values.SaveValue("computed", "types", 21 / 3);
    context.Values.SaveDefaultPath("invoices", "export", "C:\\Data\\");
    context.Windows.SaveWindowPos(form(300));

    var sections = context.ActiveUPM.PreferenceSections, values = sections("kv").Items, seen = "";
    check("by default members", sections("DP").Items("invoices", "export").Path, "C:\\Data\\");
    var moved = form(0);
    check("window", context.Windows.LoadWindowPos(moved), true);
    check("its left", moved.Left, 300);
    for (var e = new Enumerator(values); !e.atEnd(); e.moveNext()) {
        seen += e.item().Value;
        values.Remove(e.item().Key, e.item().Group);
    }
    check("removed while walking", seen + values.Count, "-7000170");
}

try {
    entries();
    preferences();
    WScript.Echo("values.js: passed");
} catch (e) {
    WScript.Echo("values.js: " + e.number + " " + e.message);
    WScript.Quit(1);
}
