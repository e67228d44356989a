// cscript set.js FILE CODE PROPERTY VALUE
// Sets one property of every definition with that code, at any depth, and saves the file in its place.

if (WScript.Arguments.length != 4) Fail("usage: cscript set.js FILE CODE PROPERTY VALUE");
var path = WScript.Arguments(0), code = WScript.Arguments(1), property = WScript.Arguments(2), value = WScript.Arguments(3);
var files = new ActiveXObject("Scripting.FileSystemObject");
if (!files.FileExists(path)) Fail("no such file: " + path);
var store = new ActiveXObject("ZEL_BRU.BRU_Store");
if (store.LoadFromFile(path) != 0) Fail("not a file that this version can read");

var found = SetIn(store.Definitions);
if (found == 0) Fail("there is no " + code);
Save();
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

// A write that fails is not reported, so the new file is looked at before it takes the place of the old one.
function Save() {
    var beside = path + ".new", saved = new ActiveXObject("ZEL_BRU.BRU_Store");
    if (store.SaveToFile(beside) != 0) Fail("this version of a file cannot be saved");
    if (!files.FileExists(beside)) Fail("cannot write " + beside);
    if (saved.LoadFromFile(beside) != 0 || saved.Definitions.Count != store.Definitions.Count) Fail("not saved whole: " + beside);
    files.DeleteFile(path);
    files.MoveFile(beside, path);
}

function Fail(message) {
    WScript.Echo(message);
    WScript.Quit(1);
}
