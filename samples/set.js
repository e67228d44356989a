// cscript set.js FILE CODE PROPERTY VALUE
// Sets one property of every definition with that code, at any depth, and saves the file in its place. The file is
// replaced only by one that was read back and compared, and only if it holds nothing that the store does not.

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

if (WScript.Arguments.length != 4) Fail("usage: cscript set.js FILE CODE PROPERTY VALUE");
var path = WScript.Arguments(0), code = WScript.Arguments(1), property = WScript.Arguments(2), value = WScript.Arguments(3);
var files = new ActiveXObject("Scripting.FileSystemObject");
if (!files.FileExists(path)) Fail("no such file: " + path);
if (files.GetFile(path).Attributes & 1) Fail("read-only: " + path);
var store = Load(path);
if (!store) Fail("not a file that can be opened and read: " + path);
if (files.GetFile(path).Size != SizeOf(store)) Fail("damaged, or more than definitions, which a save would lose: " + path);

var found = SetIn(store.Definitions);
if (found == 0) Fail("there is no " + code);
Replace(path, SaveBeside(path));
WScript.Echo("changed " + found);

function SetIn(definitions) {
    var count = 0;
    for (var each = new Enumerator(definitions); !each.atEnd(); each.moveNext()) {
        var definition = each.item();
        if (definition.AreaCode == code) {
            Put(definition);
            ++count;
        }
        count += SetIn(definition.Members);
    }
    return count;
}

// What does not fit the property's type is an error here; a text that is too long is cut without one.
function Put(definition) {
    if (definition[property] === undefined) Fail("a definition has no property " + property);
    try {
        definition[property] = value;
    } catch (error) {
        Fail(property + " cannot be " + value);
    }
    if (definition[property] != value) Fail(property + " can only be \"" + definition[property] + "\"");
}

// Null for a file that could not be opened, or whose version is refused. A store answers a load that opens nothing by the
// version it holds; so it is made to hold one that is refused.
function Load(path) {
    var loaded = new ActiveXObject("ZEL_BRU.BRU_Store");
    loaded.Header.FileVersion = 255;
    loaded.SaveToFile("");
    return loaded.LoadFromFile(path) == 0 ? loaded : null;
}

// Saves beside the file and gives the name. A write that fails is not reported: all of it is read back.
function SaveBeside(path) {
    var beside = FreeName(path, ".new");
    try {
        files.CreateTextFile(beside, false).Close();
    } catch (error) {
        Fail("cannot write " + beside);
    }
    var refused = store.SaveToFile(beside) != 0, saved = Load(beside);
    if (!refused && saved && files.GetFile(beside).Size == SizeOf(store) && SameFiles(store, saved)) return beside;
    files.DeleteFile(beside);
    Fail(refused ? "this version of a file cannot be saved" : "cannot be saved whole, nothing is changed: " + path);
}

// The old file steps aside until the new one stands in its place.
function Replace(path, beside) {
    var aside = FreeName(path, ".old");
    try {
        files.MoveFile(path, aside);
    } catch (error) {
        files.DeleteFile(beside);
        Fail("in use, nothing is changed: " + path);
    }
    try {
        files.MoveFile(beside, path);
    } catch (error) {
        files.MoveFile(aside, path);
        Fail("cannot be replaced, what was saved is " + beside);
    }
    files.DeleteFile(aside);
}

function FreeName(path, ending) {
    var name = path + ending;
    for (var n = 2; files.FileExists(name) || files.FolderExists(name); ++n) name = path + ending + n;
    return name;
}

function SameFiles(a, b) {
    return Same(storeNames, a, b) && Same(headerNames, a.Header, b.Header) &&
        SameTrees(a.Definitions, b.Definitions);
}

function SameTrees(a, b) {
    var these = new Enumerator(a), those = new Enumerator(b);
    for (; !these.atEnd() && !those.atEnd(); these.moveNext(), those.moveNext()) {
        if (!Same(definitionNames, these.item(), those.item())) return false;
        if (!SameTrees(these.item().Members, those.item().Members)) return false;
    }
    return these.atEnd() && those.atEnd();
}

function Same(names, a, b) {
    for (var i = 0; i < names.length; ++i) {
        var one = a[names[i]], other = b[names[i]];
        if (one !== other && (one === one || other === other)) return false;  // NaN is itself here
    }
    return true;
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

function Fail(message) {
    WScript.Echo(message);
    WScript.Quit(1);
}
