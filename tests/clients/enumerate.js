// Walks everything a manager holds, sections and items, with Enumerator, as a report would.
function check(what, given, wanted) {
    if (given !== wanted) throw new Error(what + " is '" + given + "', not '" + wanted + "'");
}

function each(collection, visit) {
    for (var e = new Enumerator(collection); !e.atEnd(); e.moveNext()) visit(e.item());
}

function listing(manager) {
    var text = "";
    each(manager.PreferenceSections, function (section) {
        text += section.Id + "(" + section.Items.Count + ")";
        each(section.Items, function (item) { text += " " + item.SearchKey; });
        text += "; ";
    });
    return text;
}

function main() {
    var preferences = new ActiveXObject("VelaUtil10.Preferences").MyPreferences.NewPreferences();
    preferences.ActiveDataSources.LocalSource = "";
    preferences.ActiveDataSources.SharedSource = "";
    var manager = preferences.ActiveUPM;
    check("before the start", listing(manager), "");
    preferences.StartUPM();
    check("nobody's sections", listing(manager), "PP(0); UI(0); DP(0); KV(0); ");

    preferences.Values.SaveValue("b", "two", "1");
    preferences.Values.SaveValue("a", "one", "1");
    preferences.Values.SaveDefaultPath("invoices", "export", "C:\\");
    check("in insertion order", listing(manager),
          "PP(0); UI(0); DP(1) INVOICES@EXPORT; KV(2) B@TWO A@ONE; ");
    preferences.Values.SaveValue("b", "two", "2");
    check("a replaced item is last", listing(manager),
          "PP(0); UI(0); DP(1) INVOICES@EXPORT; KV(2) A@ONE B@TWO; ");

    var values = manager.PreferenceSections("kv").Items;
    var seen = "";
    each(values, function (item) {
        seen += item.Key;
        values.Remove(item.Key, item.Group);
    });
    check("removed while walking", seen + values.Count, "AB0");

    var items = manager.PreferenceSections(4);
    check("a section by place", items.Description, "Key Value");
    items.Description = "ignored";
    check("a constant of its class", items.Description, "Key Value");

    manager.PreferenceSections.Remove("ui");
    manager.PreferenceSections.Remove("xx");
    check("a section removed", listing(manager), "PP(0); DP(1) INVOICES@EXPORT; KV(0); ");
    check("registered", manager.IsRegistered("kv") && !manager.IsRegistered("ui"), true);
    preferences.StopUPM();
}

try {
    main();
} catch (e) {
    WScript.Echo("enumerate.js: " + e.message);
    WScript.Quit(1);
}
WScript.Echo("enumerate.js: passed");
