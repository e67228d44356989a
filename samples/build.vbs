' cscript build.vbs FILE
' Makes a definition file from nothing: a dozen areas as an appraisal office uses them.
Option Explicit

Dim files, path, again, store, all
If WScript.Arguments.Count <> 1 Then Fail "usage: cscript build.vbs FILE"
path = WScript.Arguments(0)
Set files = CreateObject("Scripting.FileSystemObject")
again = path & ".again"
If IsThere(path) Then Fail "there is such a file already: " & path
If IsThere(again) Then Fail "there is such a file already: " & again

Set store = CreateObject("ZEL_BRU.BRU_Store")
Set all = store.Definitions

With store.Header
    .CreatedBy = "build"
    .CreatedByVersion = "sample 1.0"
    .LastModifiedBy = "build"
    .ModifiedByVersion = "sample 1.0"
    .ProgramVersionSignature = "1.0"
    .CreationDate = 155825          ' day 0 is 1 January 1600
    .CreationTime = 9 * 3600
    .ModifiedDate = 155825
    .ModifiedTime = 9 * 3600 + 1800
End With
store.DefinitionType = 1

Dim first, land
Set first = NewDefinition("GLA1", "First Floor", "Gross living area", 1)
Add all, first
AddMember first, "P/P", "Porch"
AddMember first, "OTH", "Stairs"
first.SubtractAreaCode = "P/P"
first.LineColor = 1
first.FillColor = 14
first.FillPattern = 3
Add all, NewDefinition("GLA2", "Second Floor", "Gross living area", 1)
Add all, NewDefinition("GLA3", "Third Floor", "Gross living area", 1)
Add all, NewDefinition("GLA0", "Attic", "Finished, sloped", 0.5)
Add all, NewDefinition("GBA1", "Building Level 1", "Gross building area", 1)
Add all, NewDefinition("GBA2", "Building Level 2", "Gross building area", 1)
Add all, NewDefinition("BSMT", "Basement", "Below grade", 1)
Add all, NewDefinition("GAR", "Garage", "Attached, two cars", 1)
Add all, NewDefinition("P/P", "Porch and Patio", "Covered or open", 1)
Set land = NewDefinition("LAND", "Land", "The whole parcel", 1)
Add all, land
AddMember land, "SITE", "Building Site"
AddMember land, "OTH", "Right of Way"
land.SubtractAreaCode = "OTH"
Add all, NewDefinition("SITE", "Site", "As improved", 1)
Add all, NewDefinition("OTH", "Other", "Not in any total", 0)

SaveWhole store, path
WScript.Echo "saved " & all.Count & " definitions"

Function NewDefinition(code, name, description, multiplier)
    Dim made
    Set made = CreateObject("ZEL_BRU.ZEL_Definition")
    made.AreaCode = code
    made.AreaName = name
    made.AreaDescription = description
    made.Multiplier = multiplier
    made.WallWidth = 0.5
    made.WallHeight = 8
    made.SegmentStyle = "Solid"
    made.PostArea = 1
    Set NewDefinition = made
End Function

Sub Add(collection, definition)
    collection.Add definition
End Sub

Sub AddMember(definition, code, name)
    definition.Members.Add NewDefinition(code, name, "", 1)
End Sub

Function IsThere(path)
    IsThere = files.FileExists(path) Or files.FolderExists(path)
End Function

' A write that fails half-way is not reported: on a full disk the file lacks its end, and one that is saved beside it has
' nothing. Such a file is taken away again. Where others have worked on the definitions, read back what was saved and
' compare all of it, as edit.vbs does.
Sub SaveWhole(store, path)
    Dim whole, size
    If store.SaveToFile(path) <> 0 Then Fail "this version of a file cannot be saved"
    If Not files.FileExists(path) Then Fail "cannot write " & path
    size = files.GetFile(path).Size
    store.SaveToFile again
    whole = files.FileExists(again)
    If whole Then
        whole = size > 0 And files.GetFile(again).Size = size
        files.DeleteFile again
    End If
    If whole Then Exit Sub
    files.DeleteFile path
    Fail "cannot be saved whole: " & path
End Sub

Sub Fail(message)
    WScript.Echo message
    WScript.Quit 1
End Sub
