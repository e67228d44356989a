' cscript edit.vbs FILE SAVED-AS
' Changes the header and a definition, adds a definition with two members, removes one, and saves under another name.
Option Explicit

Dim store, definitions, found, i
Set store = CreateObject("ZEL_BRU.BRU_Store")
store.LoadFromFile WScript.Arguments(0)
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

If store.SaveToFile(WScript.Arguments(1)) <> 0 Then
    WScript.Echo "This version of a file cannot be saved."
    WScript.Quit 1
End If

Function Find(code)
    Dim d
    For Each d In definitions
        If d.AreaCode = code Then
            Set Find = d
            Exit Function
        End If
    Next
    WScript.Echo "There is no " & code & "."
    WScript.Quit 1
End Function

Function Member(code, name)
    Set Member = CreateObject("ZEL_BRU.ZEL_Definition")
    Member.AreaCode = code
    Member.AreaName = name
End Function
