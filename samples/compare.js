// cscript compare.js OLD NEW
// Says which definitions were added, removed, moved or changed, and in which property. Ends with 1 if there is a
// difference, or something in a file that the store does not hold.

var storeNames = "DefinitionType Flags".split(" ");
var headerNames = ("Signature Type FileVersion TarnVersion Flags CreationDate CreationTime CreatedBy CreatedByVersion " +
    "ModifiedDate ModifiedTime LastModifiedBy ModifiedByVersion ProgramVersionSignature").split(" ");
// Name, bytes in a file (a code has two and its characters), version of the first file that has it.
var definitionFields = [
    ["AreaCode", "code", 0], ["AreaDescription", 21, 0], ["AreaName", 21, 0], ["CalcType", 1, 0], ["DimensionType", 1, 0],
    ["FillColor", 2, 0], ["FillPattern", 2, 0], ["Hidden", 1, 2], ["LineColor", 2, 0], ["Multiplier", 8, 0],
    ["PostArea", 1, 0], ["PostDescription", 1, 0], ["SegmentStyle", 33, 0], ["SubtractAreaCode", "code", 3],
    ["WallHeight", 8, 0], ["WallWidth", 8, 0]];
var definitionNames = [];
for (var n = 0; n < definitionFields.length; ++n) definitionNames.push(definitionFields[n][0]);
var differences = 0;

if (WScript.Arguments.length != 2) Fail("usage: cscript compare.js OLD NEW");
var older = Load(WScript.Arguments(0)), newer = Load(WScript.Arguments(1));
CompareProperties("file", storeNames, older, newer);
CompareProperties("header", headerNames, older.Header, newer.Header);
CompareTrees("", older.Definitions, newer.Definitions);
if (differences == 0) WScript.Echo("no difference");
WScript.Quit(differences == 0 ? 0 : 1);

function CompareTrees(path, before, after) {
    var was = ByCode(before), is = ByCode(after), key, oldOrder = "", newOrder = "";
    for (key in was) {
        if (is[key]) oldOrder += key + "\n";
        else Say("removed  " + path + key);
    }
    for (key in is) {
        if (!was[key]) {
            Say("added    " + path + key);
            continue;
        }
        newOrder += key + "\n";
        CompareProperties(path + key, definitionNames, was[key], is[key]);
        CompareTrees(path + key + " > ", was[key].Members, is[key].Members);
    }
    if (oldOrder != newOrder) Say("moved    " + path + newOrder.replace(/\n$/, "").replace(/\n/g, ", "));
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
        var was = before[names[i]], is = after[names[i]];
        if (was === is || was !== was && is !== is) continue;  // NaN is itself here
        Say("changed  " + what + ": " + names[i] + " was \"" + was + "\", is \"" + is + "\"");
    }
}

function Load(path) {
    var files = new ActiveXObject("Scripting.FileSystemObject"), store = new ActiveXObject("ZEL_BRU.BRU_Store");
    if (!files.FileExists(path)) Fail("no such file: " + path);
    // A store answers a load that opens nothing by the version it holds; this one holds one that is refused.
    store.Header.FileVersion = 255;
    store.SaveToFile("");
    if (store.LoadFromFile(path) != 0) Fail("not a file that can be opened and read: " + path);
    if (files.GetFile(path).Size != SizeOf(store)) Say("damaged, or more than definitions: " + path);
    return store;
}

// The bytes of a file that holds what the store does and no more, in a code page of one byte a character.
function SizeOf(store) {
    var version = store.Header.FileVersion, flags = store.Header.Flags;
    return 54 + (flags & 0x10 ? 11 : 0) + (flags & 0x100 ? 42 : 0) + (version >= 4 ? 1 : 0) + (version >= 5 ? 4 : 0) +
        SizeOfList(store.Definitions, version);
}

function SizeOfList(definitions, version) {
    var size = 2;
    for (var each = new Enumerator(definitions); !each.atEnd(); each.moveNext()) {
        var d = each.item();
        size += SizeOfList(d.Members, version);
        for (var i = 0; i < definitionFields.length; ++i) {
            var name = definitionFields[i][0], bytes = definitionFields[i][1], since = definitionFields[i][2];
            if (version >= since) size += bytes == "code" ? 2 + d[name].length : bytes;
        }
    }
    return size;
}

function Say(difference) {
    ++differences;
    WScript.Echo(difference);
}

function Fail(message) {
    WScript.Echo(message);
    WScript.Quit(2);
}
