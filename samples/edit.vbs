' cscript edit.vbs FILE SAVED-AS
' Changes the header and a definition, adds a definition with two members, removes one, and saves under another name.
Option Explicit

Dim files, savedAs, store, definitions, found, i
If WScript.Arguments.Count <> 2 Then Fail "usage: cscript edit.vbs FILE SAVED-AS"
savedAs = WScript.Arguments(1)
Set files = CreateObject("Scripting.FileSystemObject")
If Not files.FileExists(WScript.Arguments(0)) Then Fail "no such file: " & WScript.Arguments(0)

' A store answers a load that opens nothing by the version it holds; this one holds one that is refused.
Set store = CreateObject("ZEL_BRU.BRU_Store")
store.Header.FileVersion = 255
store.SaveToFile ""
If store.LoadFromFile(WScript.Arguments(0)) <> 0 Then Fail "not a file that can be opened and read"
If files.GetFile(WScript.Arguments(0)).Size <> SizeOf(store) Then Fail "damaged, or more than definitions, which a save would lose"
Set definitions = store.Definitions

store.Header.LastModifiedBy = "edit"
store.Header.ModifiedTime = 10 * 3600

Set found = Find("BSMT")
found.AreaName = "Finished Basement"
found.Multiplier = 0.75

Dim annex
Set annex = CreateObject("ZEL_BRU.ZEL_Definition")
annex.AreaCode = "GBA3"
annex.AreaName = "Annex"
annex.Multiplier = 1
annex.Members.Add Member("GBA4", "Annex Level 1")
annex.Members.Add Member("GBA5", "Annex Level 2")
definitions.Add annex

' From the back, so that what moves down has been looked at.
For i = definitions.Count - 1 To 0 Step -1
    If definitions(i).AreaCode = "GLA3" Then definitions.Remove i
Next

SaveWhole store, savedAs
WScript.Echo "saved " & definitions.Count & " definitions"

Function Find(code)
    Dim d
    For Each d In definitions
        If d.AreaCode = code Then
            Set Find = d
            Exit Function
        End If
    Next
    Fail "there is no " & code
End Function

Function Member(code, name)
    Set Member = CreateObject("ZEL_BRU.ZEL_Definition")
    Member.AreaCode = code
    Member.AreaName = name
End Function

' Saves under a name that no file has, reads back what was saved and compares all of it: a write that fails is not
' reported. What is not whole is taken away again.
Sub SaveWhole(store, path)
    Dim saved, whole
    If files.FileExists(path) Or files.FolderExists(path) Then Fail "there is such a file already: " & path
    If store.SaveToFile(path) <> 0 Then Fail "this version of a file cannot be saved"
    If Not files.FileExists(path) Then Fail "cannot write " & path
    Set saved = CreateObject("ZEL_BRU.BRU_Store")
    whole = saved.LoadFromFile(path) = 0
    If whole Then whole = files.GetFile(path).Size = SizeOf(store) And SameFiles(store, saved)
    If whole Then Exit Sub
    files.DeleteFile path
    Fail "cannot be saved whole: " & path
End Sub

Function SameFiles(a, b)
    SameFiles = a.DefinitionType = b.DefinitionType And a.Flags = b.Flags And SameHeaders(a.Header, b.Header) And _
        SameTrees(a.Definitions, b.Definitions)
End Function

Function SameHeaders(a, b)
    SameHeaders = a.Signature = b.Signature And a.Type = b.Type And a.FileVersion = b.FileVersion And _
        a.TarnVersion = b.TarnVersion And a.Flags = b.Flags And a.CreationDate = b.CreationDate And _
        a.CreationTime = b.CreationTime And a.CreatedBy = b.CreatedBy And a.CreatedByVersion = b.CreatedByVersion And _
        a.ModifiedDate = b.ModifiedDate And a.ModifiedTime = b.ModifiedTime And a.LastModifiedBy = b.LastModifiedBy And _
        a.ModifiedByVersion = b.ModifiedByVersion And a.ProgramVersionSignature = b.ProgramVersionSignature
End Function

Function SameTrees(a, b)
    Dim i
    SameTrees = a.Count = b.Count
    For i = 0 To a.Count - 1
        If SameTrees Then SameTrees = SameDefinitions(a(i), b(i))
    Next
End Function

Function SameDefinitions(a, b)
    Dim these, those, i
    these = FieldsOf(a)
    those = FieldsOf(b)
    SameDefinitions = True
    ' What is no number is never equal, not even to itself.
    For i = 0 To UBound(these) Step 3
        If these(i) <> those(i) And (these(i) = these(i) Or those(i) = those(i)) Then SameDefinitions = False
    Next
    If SameDefinitions Then SameDefinitions = SameTrees(a.Members, b.Members)
End Function

' All of a definition but its members: value, bytes in a file, version of the first file that has it. CLng, since VBScript
' does not compare unsigned numbers of 16 bits.
Function FieldsOf(d)
    FieldsOf = Array( _
        d.AreaCode, 2 + Len(d.AreaCode), 0, d.AreaDescription, 21, 0, d.AreaName, 21, 0, d.CalcType, 1, 0, _
        d.DimensionType, 1, 0, CLng(d.FillColor), 2, 0, CLng(d.FillPattern), 2, 0, d.Hidden, 1, 2, CLng(d.LineColor), 2, 0, _
        d.Multiplier, 8, 0, d.PostArea, 1, 0, d.PostDescription, 1, 0, d.SegmentStyle, 33, 0, _
        d.SubtractAreaCode, 2 + Len(d.SubtractAreaCode), 3, d.WallHeight, 8, 0, d.WallWidth, 8, 0)
End Function

' The bytes of a file that holds what the store does and no more, in a code page of one byte a character.
Function SizeOf(store)
    Dim version
    version = CInt(store.Header.FileVersion)
    SizeOf = 54 + SizeOfList(store.Definitions, version)
    If store.Header.Flags And 16 Then SizeOf = SizeOf + 11
    If store.Header.Flags And 256 Then SizeOf = SizeOf + 42
    If version >= 4 Then SizeOf = SizeOf + 1
    If version >= 5 Then SizeOf = SizeOf + 4
End Function

Function SizeOfList(definitions, version)
    Dim d, fields, i
    SizeOfList = 2
    For Each d In definitions
        SizeOfList = SizeOfList + SizeOfList(d.Members, version)
        fields = FieldsOf(d)
        For i = 0 To UBound(fields) Step 3
            If version >= fields(i + 2) Then SizeOfList = SizeOfList + fields(i + 1)
        Next
    Next
End Function

Sub Fail(message)
    WScript.Echo message
    WScript.Quit 1
End Sub
