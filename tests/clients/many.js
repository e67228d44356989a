// cscript many.js FILE
// Makes a file of one definition with 1502 members whose last byte begins a page of 4096.

var store = new ActiveXObject("ZEL_BRU.BRU_Store"), basement = NewDefinition("BSMT");
basement.SubtractAreaCode = new Array(162).join("x");
for (var i = 0; i < 1502; ++i) basement.Members.Add(NewDefinition("A"));
store.Definitions.Add(basement);
store.Header.FileVersion = 5;
store.SaveToFile(WScript.Arguments(0));

function NewDefinition(code) {
    var definition = new ActiveXObject("ZEL_BRU.ZEL_Definition");
    definition.AreaCode = code;
    return definition;
}
