// Collection as JScript programs use it.
function check(what, given, wanted) {
    if (given !== wanted) throw new Error(what + " is '" + given + "', not '" + wanted + "'");
}

function joined(collection) {
    var text = "";
    for (var e = new Enumerator(collection); !e.atEnd(); e.moveNext()) text += e.item();
    return text;
}

function main() {
    var letters = new ActiveXObject("VelaUtil10.Collection");
    letters.Add("b", "Key B");
    letters.Add("c");
    letters.Add("a", "key a", 1);
    check("order", joined(letters), "abc");
    check("count", letters.Count, 3);
    check("by place", letters(2), "b");
    check("by computed place", letters.Item(6 / 2), "c");
    check("by key", letters.Item("KEY B"), "b");

    var entry = { name: "an object of the script" };
    letters.Add(entry, "object");
    check("an object of the script", letters("object").name, entry.name);
    letters.Remove("object");

    var e = new Enumerator(letters);
    e.moveNext();
    letters.Remove("key b");
    e.moveNext();
    check("after a removal", e.item(), "c");
    e.moveFirst();
    check("from the start", e.item(), "a");

    var inner = new ActiveXObject("VelaUtil10.Collection");
    inner.Add(letters, "letters");
    check("nested", inner("letters")(1), "a");
}

try {
    main();
} catch (e) {
    WScript.Echo("collection.js: " + e.message);
    WScript.Quit(1);
}
WScript.Echo("collection.js: passed");
