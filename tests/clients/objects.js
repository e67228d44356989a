// cscript objects.js FILE
// Checks what the author of a JScript client relies on. Ends with 1 when a check fails; FILE is written.

var failures = 0, path = WScript.Arguments(0);
var store = new ActiveXObject("ZEL_BRU.BRU_Store"), defs = store.Definitions;

for (var i = 1; i <= 4; ++i) {
    var d = new ActiveXObject("ZEL_BRU.ZEL_Definition");
    d.AreaCode = "A" + i;
    defs.Add(d);
}
var seen = "";
for (i = 0; i < defs.Count; ++i) seen += defs(i).AreaCode + defs.Item(i).AreaCode + " ";
Check("positions", "A1A1 A2A2 A3A3 A4A4 ", seen);
Check("positions that are none", "undefined undefined", typeof defs(-1) + " " + typeof defs(4));
for (i = defs.Count - 1; i >= 0; --i) {
    if (i % 2) defs.Remove(i);
}
Check("removed by a variable", "A1 A3", Tree(defs));

d = defs(0);
d.CalcType = "200";
Check("text for a byte", 201, d.CalcType + 1);
Check("too big for a byte", "10 200", OverflowOf("CalcType", 256) + " " + d.CalcType);

d.Members = defs;
d.Members.Remove(0);
Check("members share definitions", "A1(A3) A3", Tree(defs));
Check("saved", 0, store.SaveToFile(path));
var other = new ActiveXObject("ZEL_BRU.BRU_Store");
Check("loaded", "0 A1(A3) A3", other.LoadFromFile(path) + " " + Tree(other.Definitions));

if (failures) WScript.Quit(1);
WScript.Echo("all checks passed");

function Tree(definitions) {
    var codes = [];
    for (var each = new Enumerator(definitions); !each.atEnd(); each.moveNext()) {
        var members = Tree(each.item().Members);
        codes.push(each.item().AreaCode + (members ? "(" + members + ")" : ""));
    }
    return codes.join(" ");
}

// The low word of the error that the put ends with: 10 is an overflow.
function OverflowOf(property, value) {
    try {
        d[property] = value;
    } catch (error) {
        return error.number & 0xffff;
    }
}

function Check(what, expected, actual) {
    if (expected === actual) return;
    ++failures;
    WScript.Echo("failed: " + what + ": expected \"" + expected + "\", was \"" + actual + "\"");
}
