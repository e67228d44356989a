' cscript build.vbs FILE
' Makes a definition file from nothing: a dozen areas as an appraisal office uses them.
Option Explicit

Dim files, path, store, all
If WScript.Arguments.Count <> 1 Then Fail "usage: cscript build.vbs FILE"
path = WScript.Arguments(0)
Set files = CreateObject("Scripting.FileSystemObject")
If files.FileExists(path) Then Fail "there is such a file already: " & path

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

' A script sees the result, which tells of a refused version only, and not the return code: look for the file.
If store.SaveToFile(path) <> 0 Then Fail "this version of a file cannot be saved"
If Not files.FileExists(path) Then Fail "cannot write " & path
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

Sub Fail(message)
    WScript.Echo message
    WScript.Quit 1
End Sub
