' cscript objects.vbs
' Checks what the author of a VBScript client relies on. Ends with 1 when a check fails.
Option Explicit

Dim failures, store, defs, d, other, i
Set store = CreateObject("ZEL_BRU.BRU_Store")
Set defs = store.Definitions

' Positions: variables, literals, the default member, and none.
For i = 1 To 4
    defs.Add NewDefinition("A" & i)
Next
i = 1
Check "positions", "A1 A2 A3 A4", defs(0).AreaCode & " " & defs(i).AreaCode & " " & store.Definitions.Item(2).AreaCode & " " & defs(7 / 2 - 0.5).AreaCode
defs.Remove Null
defs.Remove other
defs.Remove CDate(1)
Check "positions that are none", "True True 4", IsEmpty(defs(-1)) & " " & IsEmpty(defs("0")) & " " & defs.Count

' A walk sees what was there when it began.
For Each d In defs
    defs.Remove 0
    If d.AreaCode <> "A2" Then defs.Add d
Next
Check "after the walk", "A1 A3 A4", Tree(defs)
defs.Remove i
Check "removed by a variable", "A1 A4", Tree(defs)

' Values: what fits a property is converted, what does not is refused and changes nothing.
Set d = defs(0)
d.CalcType = CLng(200)
Check "long for a byte", 201, d.CalcType + 1
Check "too big for a byte", "6 200", Overflow(256) & " " & d.CalcType

' The header is copied, definitions are shared.
Set other = CreateObject("ZEL_BRU.ZEL_Header")
other.FileVersion = 4
store.Header = other
other.FileVersion = 6
Check "header", 4, CInt(store.Header.FileVersion)
Set other = CreateObject("ZEL_BRU.ZEL_Collection")
other.Add NewDefinition("S")
Set store.Definitions = other
other(0).AreaCode = "SHARED"
other.Add NewDefinition("NOT")
Check "definitions", "SHARED", Tree(store.Definitions)

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

' The error that putting a byte ends with: 6 is an overflow.
Function Overflow(value)
    On Error Resume Next
    d.CalcType = value
    Overflow = Err.Number
End Function

Sub Check(what, expected, actual)
    If expected = actual Then Exit Sub
    failures = failures + 1
    WScript.Echo "failed: " & what & ": expected """ & expected & """, was """ & actual & """"
End Sub
