' cscript list.vbs FILE
' Prints a definition file as a table: the header, then the tree of definitions.
Option Explicit

If WScript.Arguments.Count <> 1 Then Fail "usage: cscript list.vbs FILE"
If Not CreateObject("Scripting.FileSystemObject").FileExists(WScript.Arguments(0)) Then Fail "no such file: " & WScript.Arguments(0)

Dim store
Set store = CreateObject("ZEL_BRU.BRU_Store")
' A store answers a load that opens nothing by the version it holds; this one holds one that is refused.
store.Header.FileVersion = 255
store.SaveToFile ""
If store.LoadFromFile(WScript.Arguments(0)) <> 0 Then Fail "not a file that can be opened and read"

With store.Header
    Row "Signature", .Signature & ", type " & .Type & ", file version " & .FileVersion
    Row "Created", Moment(.CreationDate, .CreationTime) & " by " & Quoted(.CreatedBy) & " with " & Quoted(.CreatedByVersion)
    Row "Modified", Moment(.ModifiedDate, .ModifiedTime) & " by " & Quoted(.LastModifiedBy) & " with " & Quoted(.ModifiedByVersion)
    Row "Program", Quoted(.ProgramVersionSignature) & ", line " & .TarnVersion & ", header flags " & .Flags
End With
Row "Definitions", store.Definitions.Count & ", type " & store.DefinitionType & ", file flags " & store.Flags
WScript.Echo ""
WScript.Echo Pad("Code", 14) & Pad("Name", 20) & Pad("Description", 20) & Pad("Factor", 8) & Pad("Less", 6) & "Members"
WScript.Echo String(75, "-")
PrintTree store.Definitions, 0

Sub PrintTree(definitions, depth)
    Dim d
    For Each d In definitions
        WScript.Echo Pad(Space(2 * depth) & d.AreaCode, 14) & Pad(d.AreaName, 20) & Pad(d.AreaDescription, 20) & _
            Pad(d.Multiplier, 8) & Pad(d.SubtractAreaCode, 6) & d.Members.Count
        PrintTree d.Members, depth + 1
    Next
End Sub

Sub Row(name, value)
    WScript.Echo Pad(name, 14) & value
End Sub

Function Pad(text, width)
    Pad = text
    If Len(Pad) < width Then Pad = Pad & Space(width - Len(Pad)) Else Pad = Pad & " "
End Function

Function Quoted(text)
    Quoted = """" & text & """"
End Function

' Stored are a day number from 1 January 1600 and seconds from midnight.
Function Moment(day, seconds)
    Moment = "day " & day & ", " & seconds & " s"
    If day <= 0 Or day >= 400000 Or seconds < 0 Or seconds >= 86400 Then Exit Function
    ' Before 30 December 1899 a date counts its days backwards, but the time of a day forwards.
    If day >= 109571 Then Moment = CDate(day - 109571 + seconds / 86400) Else Moment = CDate(day - 109571 - seconds / 86400)
End Function

Sub Fail(message)
    WScript.Echo message
    WScript.Quit 1
End Sub
