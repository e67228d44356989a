' cscript edit.vbs FILE SAVED-AS
' Changes the header and a definition, adds a definition with two members, removes one, and saves under another name.
Option Explicit

Dim files, savedAs, store, definitions, found, i
If WScript.Arguments.Count <> 2 Then Fail "usage: cscript edit.vbs FILE SAVED-AS"
savedAs = WScript.Arguments(1)
Set files = CreateObject("Scripting.FileSystemObject")
If Not files.FileExists(WScript.Arguments(0)) Then Fail "no such file: " & WScript.Arguments(0)
If files.FileExists(savedAs) Then Fail "there is such a file already: " & savedAs

Set store = CreateObject("ZEL_BRU.BRU_Store")
If store.LoadFromFile(WScript.Arguments(0)) <> 0 Then Fail "not a file that this version can read"
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

' The result tells of a refused version only: look for the file.
If store.SaveToFile(savedAs) <> 0 Then Fail "this version of a file cannot be saved"
If Not files.FileExists(savedAs) Then Fail "cannot write " & savedAs
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

Sub Fail(message)
    WScript.Echo message
    WScript.Quit 1
End Sub
