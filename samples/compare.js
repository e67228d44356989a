// cscript compare.js OLD NEW
// Says which definitions were added, removed or changed, and in which property. Ends with 1 if there is a difference.

var storeNames = "DefinitionType Flags".split(" ");
var headerNames = ("Signature Type FileVersion TarnVersion Flags CreationDate CreationTime CreatedBy CreatedByVersion " +
    "ModifiedDate ModifiedTime LastModifiedBy ModifiedByVersion ProgramVersionSignature").split(" ");
var definitionNames = ("AreaName AreaDescription CalcType DimensionType FillColor FillPattern Hidden LineColor Multiplier " +
    "PostArea PostDescription SegmentStyle SubtractAreaCode WallHeight WallWidth").split(" ");
var differences = 0;

if (WScript.Arguments.length != 2) Fail("usage: cscript compare.js OLD NEW");
var older = Load(WScript.Arguments(0)), newer = Load(WScript.Arguments(1));
CompareProperties("file", storeNames, older, newer);
CompareProperties("header", headerNames, older.Header, newer.Header);
CompareTrees("", older.Definitions, newer.Definitions);
if (differences == 0) WScript.Echo("no difference");
WScript.Quit(differences == 0 ? 0 : 1);

function CompareTrees(path, before, after) {
    var was = ByCode(before), is = ByCode(after), key;
    for (key in was) {
        if (!is[key]) Say("removed  " + path + key);
    }
    for (key in is) {
        if (!was[key]) {
            Say("added    " + path + key);
            continue;
        }
        CompareProperties(path + key, definitionNames, was[key], is[key]);
        CompareTrees(path + key + " > ", was[key].Members, is[key].Members);
    }
}

// The definitions by their codes; a code that comes again is told apart by a number.
function ByCode(definitions) {
    var byCode = {};
    for (var each = new Enumerator(definitions); !each.atEnd(); each.moveNext()) {
        var code = "\"" + each.item().AreaCode + "\"", key = code;
        for (var n = 2; byCode[key]; ++n) key = code + " " + n;
        byCode[key] = each.item();
    }
    return byCode;
}

function CompareProperties(what, names, before, after) {
    for (var i = 0; i < names.length; ++i) {
        var was = String(before[names[i]]), is = String(after[names[i]]);
        if (was != is) Say("changed  " + what + ": " + names[i] + " was \"" + was + "\", is \"" + is + "\"");
    }
}

function Load(path) {
    if (!new ActiveXObject("Scripting.FileSystemObject").FileExists(path)) Fail("no such file: " + path);
    var store = new ActiveXObject("ZEL_BRU.BRU_Store");
    if (store.LoadFromFile(path) != 0) Fail("not a file that this version can read: " + path);
    return store;
}

function Say(difference) {
    ++differences;
    WScript.Echo(difference);
}

function Fail(message) {
    WScript.Echo(message);
    WScript.Quit(2);
}
