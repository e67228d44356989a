; The set-up program for Windows. scripts/dist defines
;   TARGET   what it runs on: x86-unicode (any Windows) or amd64-unicode
;   VERSION  of four numbers, NAME with the first three of them
;   FILES    a script with the macros InstallFiles and RemoveFiles
;   OUT      the file to be made
; Silent with /S, into another folder with /D=folder; ends with 0 if all is installed.
Target ${TARGET}
SetCompressor /SOLID lzma
!include MUI2.nsh
!include WinMessages.nsh
!include x64.nsh
!include "${FILES}"

Name "ZEL_BRU"
OutFile "${OUT}"
RequestExecutionLevel admin
ManifestSupportedOS all
ManifestDPIAware true
ShowInstDetails show
ShowUninstDetails show
VIProductVersion "${VERSION}"
VIAddVersionKey "ProductName" "ZEL_BRU"
VIAddVersionKey "ProductVersion" "${VERSION}"
VIAddVersionKey "FileVersion" "${VERSION}"
VIAddVersionKey "FileDescription" "ZEL_BRU set-up"
VIAddVersionKey "LegalCopyright" ""

!define MUI_ABORTWARNING
!define MUI_FINISHPAGE_NOAUTOCLOSE
!insertmacro MUI_PAGE_WELCOME
!insertmacro MUI_PAGE_DIRECTORY
!insertmacro MUI_PAGE_INSTFILES
!insertmacro MUI_PAGE_FINISH
!insertmacro MUI_UNPAGE_CONFIRM
!insertmacro MUI_UNPAGE_INSTFILES
!insertmacro MUI_LANGUAGE "English"

!define INSTALLED "Software\Microsoft\Windows\CurrentVersion\Uninstall\ZEL_BRU"
!define ENVIRONMENT "SYSTEM\CurrentControlSet\Control\Session Manager\Environment"

; Each bitness has a regsvr32 of its own; where the system's folders lie depends on who asks.
!if "${TARGET}" == "amd64-unicode"
    !define REGSVR32_X64 "$SYSDIR\regsvr32.exe"
    !define REGSVR32_X86 "$WINDIR\SysWOW64\regsvr32.exe"
!else
    !define REGSVR32_X64 "$WINDIR\Sysnative\regsvr32.exe"
    !define REGSVR32_X86 "$SYSDIR\regsvr32.exe"
!endif

Var bits  ; the folder of the system's own bitness, whose zelsketch is on the path
Var entry  ; its entry in the path

!macro Functions un

; Where the keys of this product are, and what its folders are called.
Function ${un}Prepare
    SetShellVarContext all
    StrCpy $bits "x86"
    ${If} ${IsNativeAMD64}
        SetRegView 64
        StrCpy $bits "x64"
    ${EndIf}
FunctionEnd

; Adds the entry to the machine's path or takes it away, as the word on the stack says. The path may be longer than a
; string of this language, which would cut it: it is changed in memory of its own.
Function ${un}ChangePath
    Pop $9
    StrCpy $entry ";$INSTDIR\$bits"
    System::Call 'advapi32::RegOpenKeyExW(p -2147483646, w "${ENVIRONMENT}", i 0, i 0x2001F, *p .r0) i .r1'
    ${If} $1 <> 0
        Return
    ${EndIf}
    System::Call 'advapi32::RegQueryValueExW(p r0, w "Path", p 0, *i 0 r2, p 0, *i 0 r3) i .r1'
    IntOp $4 $3 + 2100
    System::Alloc $4
    Pop $5
    ${If} $1 = 2
        StrCpy $2 2  ; there is none: it will be an expandable text
    ${Else}
        System::Call 'advapi32::RegQueryValueExW(p r0, w "Path", p 0, p 0, p r5, *i r4) i .r1'
        ${If} $1 <> 0
            Return
        ${EndIf}
    ${EndIf}
    StrCpy $6 $5
    ; $6 begins the entry, $8 is behind it: the end, or the separator of the next. 0 for an entry that is not there.
    ${Do}
        System::Call 'shlwapi::StrStrIW(p r6, w "$entry") p .r6'
        ${If} $6 P= 0
            ${ExitDo}
        ${EndIf}
        StrLen $7 $entry
        IntOp $7 $7 * 2
        IntPtrOp $8 $6 + $7
        System::Call '*$8(&i2 .r1)'
        ${If} $1 = 0
        ${OrIf} $1 = 59
            ${ExitDo}
        ${EndIf}
        StrCpy $6 $8
    ${Loop}
    ${If} $9 == "add"
    ${AndIf} $6 P= 0
        System::Call 'kernel32::lstrcatW(p r5, w "$entry")'
    ${ElseIf} $9 == "remove"
    ${AndIf} $6 P<> 0
        System::Call 'kernel32::lstrlenW(p r8) i .r1'
        IntOp $1 $1 * 2
        IntOp $1 $1 + 2
        System::Call 'kernel32::RtlMoveMemory(p r6, p r8, p r1)'
    ${EndIf}
    System::Call 'kernel32::lstrlenW(p r5) i .r1'
    IntOp $1 $1 * 2
    IntOp $1 $1 + 2
    System::Call 'advapi32::RegSetValueExW(p r0, w "Path", i 0, i r2, p r5, i r1)'
    System::Free $5
    System::Call 'advapi32::RegCloseKey(p r0)'
    SendMessage ${HWND_BROADCAST} ${WM_SETTINGCHANGE} 0 "STR:Environment" /TIMEOUT=5000
FunctionEnd

; Takes away whatever of it is there. What others have put into the folder stays, and the folder with it.
Function ${un}Remove
    ${If} $bits == "x64"
        ExecWait '"${REGSVR32_X64}" /s /u "$INSTDIR\x64\ZEL_BRU.dll"'
    ${EndIf}
    ${If} ${FileExists} "${REGSVR32_X86}"
        ExecWait '"${REGSVR32_X86}" /s /u "$INSTDIR\x86\ZEL_BRU.dll"'
    ${EndIf}
    Push "remove"
    Call ${un}ChangePath
    SetOutPath "$TEMP"  ; the folder it stands in cannot be removed
    !insertmacro RemoveFiles
    Delete "$INSTDIR\uninstall.exe"
    RMDir "$INSTDIR"
    DeleteRegKey HKLM "${INSTALLED}"
FunctionEnd

!macroend
!insertmacro Functions ""
!insertmacro Functions "un."

!macro Register regsvr32 file
    ClearErrors
    ExecWait '"${regsvr32}" /s "$INSTDIR\${file}"' $0
    ${If} ${Errors}
    ${OrIf} $0 <> 0
        DetailPrint "${file} could not be registered: $0"
        MessageBox MB_OK|MB_ICONSTOP "${file} could not be registered ($0). Nothing is installed." /SD IDOK
        Abort
    ${EndIf}
!macroend

Function .onInit
    Call Prepare
    ReadRegStr $0 HKLM "${INSTALLED}" "InstallLocation"
    ${If} $INSTDIR == ""
        StrCpy $INSTDIR $0
    ${EndIf}
    ${If} $INSTDIR == ""
        StrCpy $INSTDIR "$PROGRAMFILES32\ZEL_BRU"
        ${If} $bits == "x64"
            StrCpy $INSTDIR "$PROGRAMFILES64\ZEL_BRU"
        ${EndIf}
    ${EndIf}
FunctionEnd

Function .onInstFailed
    Call Remove
    SetErrorLevel 2
FunctionEnd

Section "Install"
    ; What was installed before goes, wherever it is.
    ReadRegStr $0 HKLM "${INSTALLED}" "InstallLocation"
    ${If} ${FileExists} "$0\uninstall.exe"
        ExecWait '"$0\uninstall.exe" /S _?=$0'
        Delete "$0\uninstall.exe"
        RMDir "$0"
    ${EndIf}
    !insertmacro InstallFiles
    ${If} $bits == "x64"
        !insertmacro Register "${REGSVR32_X64}" "x64\ZEL_BRU.dll"
    ${EndIf}
    ; A 64-bit Windows may come without its 32-bit half.
    ${If} ${FileExists} "${REGSVR32_X86}"
        !insertmacro Register "${REGSVR32_X86}" "x86\ZEL_BRU.dll"
    ${EndIf}
    Push "add"
    Call ChangePath
    WriteUninstaller "$INSTDIR\uninstall.exe"
    WriteRegStr HKLM "${INSTALLED}" "DisplayName" "${NAME}"
    WriteRegStr HKLM "${INSTALLED}" "DisplayVersion" "${VERSION}"
    WriteRegStr HKLM "${INSTALLED}" "InstallLocation" "$INSTDIR"
    WriteRegStr HKLM "${INSTALLED}" "UninstallString" '"$INSTDIR\uninstall.exe"'
    WriteRegStr HKLM "${INSTALLED}" "QuietUninstallString" '"$INSTDIR\uninstall.exe" /S'
    WriteRegDWORD HKLM "${INSTALLED}" "NoModify" 1
    WriteRegDWORD HKLM "${INSTALLED}" "NoRepair" 1
SectionEnd

Function un.onInit
    Call un.Prepare
FunctionEnd

Section "Uninstall"
    Call un.Remove
SectionEnd
