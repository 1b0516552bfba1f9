// What JScript hands to the library and gets back: its numbers, its objects, and Enumerator.
function check(what, given, wanted) {
    if (given !== wanted) throw new Error(what + " is '" + given + "', not '" + wanted + "'");
}

function entries() {
    var letters = new ActiveXObject("VelaUtil10.Collection");
    letters.Add({ name: "of the script" }, "object");
    letters.Add("b", "Key B");
    letters.Add("c");
    check("its own object", letters("object").name, "of the script");
    check("by computed place", letters(6 / 3), "b");
    var e = new Enumerator(letters), seen = "";
    for (e.moveNext(); !e.atEnd(); e.moveNext()) {
        seen += e.item();
        letters.Remove(2);
    }
    check("removed while walking", seen + letters.Count, "bc1");
}

// Names as the object spells them, whatever the list does.
function objects() {
    var serializer = new ActiveXObject("VelaUtil10.Serializer");
    var article = {
        Code: 12, active: true, Description: "Paper & \"ink\"",
        Box: { ToString: function () { return "12x3"; }, FromString: function () {} }
    };
    check("an article", serializer.Serialize(article, "Item", "@CODE,@Active,/description,@Box"),
          "<Item code=\"12\" active=\"True\" box=\"12x3\">" +
          "<Description>Paper &amp; \"ink\"</Description></Item>");
    var xml = "<Item Code='7'><x><Description>Ink</Description></x></Item>";
    // Objects that have the same members in another order.
    check("one", serializer.Serialize({ A: 1, B: 2 }, "Item", "@A,@B"), '<Item a="1" b="2"/>');
    check("other", serializer.Serialize({ B: 2, A: 1 }, "Item", "@A,@B"), '<Item a="1" b="2"/>');
    check("reading", serializer.DeSerialize(article, xml, "@Code,/Description,/Nothing"), false);
    check("what was read", article.Code + article.Description, "7Ink");
}

function happening(key, type) {
    return { EventKey: key, EventType: type, EventSource: key.charCodeAt(0) };
}

function events() {
    var register = new ActiveXObject("VelaUtil10.EventHistory"), b = happening("b", 7);
    var added = [happening("a", 7), b, happening("A", 7), happening("c", 8), { EventKey: "bare" },
                 { EventType: 7 }, null];
    for (var i in added) register.Add(added[i]);
    check("those with a new key", register.Count, 4);
    check("of a type", register.FindItems(7).Count, 2);
    check("of a source", register.FindItems(7, 98)("B").EventKey, "b");
    check("by a probe", register.FindItem(happening("C", 0)).EventType, 8);
    register.Remove(happening("A", 0));
    check("removed by it", register.FindItem(added[0]), null);
    b.EventKey = "changed";
    register.Remove(b);
    check("kept under the old key", register.Count, 3);
    register.RemoveAll();
    register.Add(b);
    check("usable again", register.Count, 1);
}

try {
    entries();
    objects();
    events();
    WScript.Echo("values.js: passed");
} catch (e) {
    WScript.Echo("values.js: " + e.number + " " + e.message);
    WScript.Quit(1);
}
