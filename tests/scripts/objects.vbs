' cscript objects.vbs FILE
' Checks what the author of a VBScript client relies on. Ends with 1 when a check fails; FILE is written.
Option Explicit

Dim failures, store, defs, d, other, i, seen, path
path = WScript.Arguments(0)
Set store = CreateObject("ZEL_BRU.BRU_Store")
Set defs = store.Definitions

' Positions: variables, literals, the default member, and none.
For i = 1 To 4
    Set d = NewDefinition("A" & i)
    defs.Add d
Next
For i = 0 To defs.Count - 1
    seen = seen & defs(i).AreaCode & defs.Item(i).AreaCode & " "
Next
Check "variable positions", "A1A1 A2A2 A3A3 A4A4 ", seen
Check "literal positions", "A1 A2 A4", defs(0).AreaCode & " " & store.Definitions.Item(1).AreaCode & " " & defs(7 / 2 - 0.5).AreaCode
Check "positions that are none", "True True", IsEmpty(defs(-1)) & " " & IsEmpty(defs(4))

' A walk sees what was there when it began.
For Each d In defs
    defs.Remove 0
    If d.AreaCode <> "A2" Then defs.Add d
Next
Check "after the walk", "A1 A3 A4", Tree(defs)
For i = defs.Count - 1 To 0 Step -1
    If defs(i).AreaCode = "A3" Then defs.Remove i
Next
Check "removed by a variable", "A1 A4", Tree(defs)

' Values: what fits a property is converted, what does not is refused and changes nothing.
Set d = defs(0)
d.CalcType = CLng(200)
Check "long for a byte", 201, d.CalcType + 1
Check "too big for a byte", "6 200", Refusal("byte") & " " & d.CalcType
Check "no number", "13 0", Refusal("number") & " " & d.Multiplier
d.FillColor = 65535
Check "16 bits", 65536, CLng(d.FillColor) + 1
Check "16 bits without CLng", "458 13", Refusal("sum") & " " & Refusal("comparison")
d.AreaName = "a name of more than nineteen characters"
Check "long text", "a name of more than", d.AreaName

' The header is copied, definitions are shared.
Set other = CreateObject("ZEL_BRU.ZEL_Header")
other.CreatedBy = "first"
other.FileVersion = 4
store.Header = other
other.CreatedBy = "later"
Check "header", "first 4", store.Header.CreatedBy & " " & store.Header.FileVersion
Set other = CreateObject("ZEL_BRU.ZEL_Collection")
other.Add NewDefinition("S")
Set store.Definitions = other
other(0).AreaCode = "SHARED"
other.Add NewDefinition("NOT")
Check "definitions", "SHARED", Tree(store.Definitions)

' A tree goes to a file and comes back, without what is no definition.
defs(0).Members.Add NewDefinition("M1")
defs(0).Members(0).Members.Add NewDefinition("M2")
defs.Add 5
Check "saved", 0, store.SaveToFile(path)
Set other = CreateObject("ZEL_BRU.BRU_Store")
Check "loaded", "0 SHARED(M1(M2))", other.LoadFromFile(path) & " " & Tree(other.Definitions)
store.Header.FileVersion = 6
Check "refused version", 1, store.SaveToFile(path)

If failures > 0 Then WScript.Quit 1
WScript.Echo "all checks passed"

Function NewDefinition(code)
    Set NewDefinition = CreateObject("ZEL_BRU.ZEL_Definition")
    NewDefinition.AreaCode = code
End Function

Function Tree(definitions)
    Dim item
    For Each item In definitions
        If Tree <> "" Then Tree = Tree & " "
        Tree = Tree & item.AreaCode
        If item.Members.Count > 0 Then Tree = Tree & "(" & Tree(item.Members) & ")"
    Next
End Function

Function Refusal(statement)
    On Error Resume Next
    Select Case statement
        Case "byte": d.CalcType = 256
        Case "number": d.Multiplier = "wide"
        Case "sum": i = d.FillColor + 1
        Case "comparison": i = (d.FillColor = 1)
    End Select
    Refusal = Err.Number
End Function

Sub Check(what, expected, actual)
    If expected = actual Then Exit Sub
    failures = failures + 1
    WScript.Echo "failed: " & what & ": expected """ & expected & """, was """ & actual & """"
End Sub
