// cscript list.js FILE
// Prints how the definitions of a file are drawn: their line, fill and walls.

if (WScript.Arguments.length != 1) Fail("usage: cscript list.js FILE");
var path = WScript.Arguments(0);
if (!new ActiveXObject("Scripting.FileSystemObject").FileExists(path)) Fail("no such file: " + path);

var store = new ActiveXObject("ZEL_BRU.BRU_Store");
// A store answers a load that opens nothing by the version it holds; this one holds one that is refused.
store.Header.FileVersion = 255;
store.SaveToFile("");
if (store.LoadFromFile(path) != 0) Fail("not a file that can be opened and read");

Row("Code", "Line style", "Line", "Fill", "Pattern", "Wall", "Hidden");
PrintTree(store.Definitions, "");

function PrintTree(definitions, indent) {
    for (var each = new Enumerator(definitions); !each.atEnd(); each.moveNext()) {
        var d = each.item();
        Row(indent + d.AreaCode, d.SegmentStyle, d.LineColor, d.FillColor, d.FillPattern,
            d.WallWidth + " x " + d.WallHeight, d.Hidden ? "yes" : "no");
        PrintTree(d.Members, indent + "  ");
    }
}

function Row() {
    var line = "";
    for (var i = 0; i < arguments.length; ++i) line += Pad(String(arguments[i]), i < 2 ? 14 : 9);
    WScript.Echo(line.replace(/ +$/, ""));
}

function Pad(text, width) {
    do text += " "; while (text.length < width);
    return text;
}

function Fail(message) {
    WScript.Echo(message);
    WScript.Quit(1);
}
