// What a script sees of the serializer: objects of its own, its own list, its DOM.
var failure = "";

function check(what, given, wanted) {
    if (given !== wanted) throw new Error(what + " is '" + given + "', not '" + wanted + "'");
}

function errorOf(action) {
    try {
        action();
    } catch (e) {
        return e.number & 0xFFFF;
    }
    return 0;
}

function Article() {
    this.Code = 12;
    this.active = true;
    this.Description = "Paper & \"ink\"";
    this.Box = { ToString: function () { return "12x3"; }, FromString: function () {} };
}

try {
    var serializer = new ActiveXObject("VelaUtil10.Serializer");
    var article = new Article();
    // Names as the object spells them, whatever the list does.
    check("an article", serializer.Serialize(article, "Item", "@CODE,@Active,/description,@Box"),
          "<Item code=\"12\" active=\"True\" box=\"12x3\">" +
          "<Description>Paper &amp; \"ink\"</Description></Item>");
    check("no list", serializer.Serialize(article, "Item"), "<Item/>");
    article.SerializableProperties = "@Code";
    check("its own list", serializer.Serialize(article, "Item", ""), "<Item code=\"12\"/>");
    check("a missing member",
          errorOf(function () { serializer.Serialize(article, "Item", "@Code,@Price"); }), 438);
    check("a bad name", errorOf(function () { serializer.Serialize(article, "an item"); }) !== 0, true);

    var xml = "<Item Code='7'><x><Description>Ink</Description></x></Item>";
    check("reading", serializer.DeSerialize(article, xml, "@Code,/Description,/Nothing"), false);
    check("an attribute", article.Code, "7");
    check("an element", article.Description, "Ink");
    check("what is no XML", serializer.DeSerialize(article, "<Item", "@Code"), false);

    var document = new ActiveXObject("Msxml2.DOMDocument.3.0");
    var made = serializer.CreateSimpleElement(document, "Price", 12.5);
    document.appendChild(made);
    check("a made element", made.text, String(12.5));
    check("a read element", serializer.ReadSimpleElement(document, "/Price[1]"), made.text);
    check("a missing element", serializer.ReadSimpleElement(made, "Price"), "");
    check("a broken path", serializer.ReadSimpleElement(made, "["), "");
    check("no node", serializer.ReadSimpleElement(null, "Price"), "");
    check("no document",
          errorOf(function () { serializer.CreateSimpleElement(null, "Price"); }), 91);
} catch (e) {
    failure = e.message;
}
if (failure !== "") {
    WScript.Echo("serializer.js: " + failure);
    WScript.Quit(1);
}
WScript.Echo("serializer.js: passed");
