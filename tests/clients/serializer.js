// What a script sees of the serializer: objects of its own, its own list, its DOM.
function check(what, given, wanted) {
    if (given !== wanted) throw new Error(what + " is '" + given + "', not '" + wanted + "'");
}

function run() {
    var serializer = new ActiveXObject("VelaUtil10.Serializer");
    var article = {
        Code: 12, active: true, Description: "Paper & \"ink\"",
        Box: { ToString: function () { return "12x3"; }, FromString: function () {} }
    };
    // Names as the object spells them, whatever the list does.
    check("an article", serializer.Serialize(article, "Item", "@CODE,@Active,/description,@Box"),
          "<Item code=\"12\" active=\"True\" box=\"12x3\">" +
          "<Description>Paper &amp; \"ink\"</Description></Item>");
    check("no list", serializer.Serialize(article, "Item"), "<Item/>");
    article.SerializableProperties = "@Code";
    check("its own list", serializer.Serialize(article, "Item", ""), "<Item code=\"12\"/>");

    var xml = "<Item Code='7'><x><Description>Ink</Description></x></Item>";
    check("reading", serializer.DeSerialize(article, xml, "@Code,/Description,/Nothing"), false);
    check("what was read", article.Code + article.Description, "7Ink");

    var document = new ActiveXObject("Msxml2.DOMDocument.3.0");
    var made = serializer.CreateSimpleElement(document, "Price", 12.5);
    document.appendChild(made);
    check("a made element", made.text, String(12.5));
    check("a read element", serializer.ReadSimpleElement(document, "/Price[1]"), made.text);
    check("an element of nothing", serializer.ReadSimpleElement(null, "Price"), "");
}

try {
    run();
    WScript.Echo("serializer.js: passed");
} catch (e) {
    WScript.Echo("serializer.js: " + e.number + " " + e.message);
    WScript.Quit(1);
}
