; The set-up program: installs the add-in for the current user, without administrator rights. /S runs it, and the
; uninstaller, without a window; the exit status is 0 when everything was done, and 2 when Excel holds the add-in
; open or something else failed.
;
; Defined by the caller: VERSION, X86_DLL, X64_DLL, LICENSE and OUTPUT. With TARGET_X64 the set-up program itself is
; a 64-bit one; the default runs on every Windows.

Unicode true
!ifdef TARGET_X64
Target amd64-unicode
!pragma warning disable 6012 ; RunningX64 is always true then, and its other branch's label unused
!endif
SetCompressor /SOLID lzma
AllowSkipFiles off
!define CLOSE_EXCEL "$\r$\n$\r$\nIf Microsoft Excel is open, close it and click Retry."
FileErrorText "" "Cannot write$\r$\n$\r$\n$0${CLOSE_EXCEL}"

!include "LogicLib.nsh"
!include "MUI2.nsh"
!include "x64.nsh"

!define PRODUCT "Quorvel AddIn for Microsoft Excel"
!define UNINSTALL_KEY "Software\Microsoft\Windows\CurrentVersion\Uninstall\Quorvel"

Name "${PRODUCT}"
OutFile "${OUTPUT}"
InstallDir "$LOCALAPPDATA\Programs\Quorvel"
RequestExecutionLevel user
BrandingText "Quorvel ${VERSION}"
VIProductVersion "${VERSION}.0"
VIAddVersionKey "ProductName" "Quorvel"
VIAddVersionKey "FileDescription" "${PRODUCT} set-up"
VIAddVersionKey "FileVersion" "${VERSION}"
VIAddVersionKey "LegalCopyright" "The Quorvel developers"

!define MUI_WELCOMEPAGE_TEXT "This installs the add-in for you alone; no administrator rights are needed.$\r$\n$\r$\nPlease close Microsoft Excel, then click Next."
!define MUI_FINISHPAGE_TEXT "Start Microsoft Excel: the SMS menu and toolbar are on the Add-ins tab of the ribbon."
!insertmacro MUI_PAGE_WELCOME
!insertmacro MUI_PAGE_LICENSE "${LICENSE}"
!insertmacro MUI_PAGE_INSTFILES
!insertmacro MUI_PAGE_FINISH
!insertmacro MUI_UNPAGE_CONFIRM
!insertmacro MUI_UNPAGE_INSTFILES
!insertmacro MUI_LANGUAGE "English"

Var Regsvr64
Var Status

; The 64-bit regsvr32, as this process sees it.
!macro FindRegsvr64
  !ifdef TARGET_X64
    StrCpy $Regsvr64 "$SYSDIR\regsvr32.exe"
  !else
    StrCpy $Regsvr64 "$WINDIR\Sysnative\regsvr32.exe"
  !endif
!macroend

; The 32-bit one. A 64-bit Windows may come without it.
!macro FindRegsvr32
  !ifdef TARGET_X64
    StrCpy $0 "$WINDIR\SysWOW64\regsvr32.exe"
  !else
    StrCpy $0 "$SYSDIR\regsvr32.exe"
  !endif
!macroend

; Leaves a non-zero $Status when the command failed or could not be started.
!macro Execute COMMAND
  ClearErrors
  ExecWait `${COMMAND}` $Status
  ${If} ${Errors}
    StrCpy $Status 1
  ${EndIf}
!macroend

; Runs regsvr32 over both DLLs, as far as they are there; OPTIONS may be /u.
!macro RegisterBoth OPTIONS
  StrCpy $Status 0
  !insertmacro FindRegsvr32
  ${If} ${FileExists} $0
  ${AndIf} ${FileExists} "$INSTDIR\x86\Quorvel.dll"
    !insertmacro Execute '"$0" ${OPTIONS} /s "$INSTDIR\x86\Quorvel.dll"'
  ${EndIf}
  ${If} ${RunningX64}
  ${AndIf} $Status == 0
  ${AndIf} ${FileExists} "$INSTDIR\x64\Quorvel.dll"
    !insertmacro FindRegsvr64
    !insertmacro Execute '"$Regsvr64" ${OPTIONS} /s "$INSTDIR\x64\Quorvel.dll"'
  ${EndIf}
!macroend

!macro Fail MESSAGE
  SetErrorLevel 2
  Abort "${MESSAGE}"
!macroend

Section
  SetOutPath "$INSTDIR\x86"
  File "${X86_DLL}"
  SetOutPath "$INSTDIR\x64"
  File "${X64_DLL}"
  SetOutPath "$INSTDIR"
  WriteUninstaller "$INSTDIR\Uninstall.exe"
  WriteRegStr HKCU "${UNINSTALL_KEY}" "DisplayName" "${PRODUCT}"
  WriteRegStr HKCU "${UNINSTALL_KEY}" "DisplayVersion" "${VERSION}"
  WriteRegStr HKCU "${UNINSTALL_KEY}" "Publisher" "The Quorvel developers"
  WriteRegStr HKCU "${UNINSTALL_KEY}" "InstallLocation" "$INSTDIR"
  WriteRegStr HKCU "${UNINSTALL_KEY}" "UninstallString" '"$INSTDIR\Uninstall.exe"'
  WriteRegStr HKCU "${UNINSTALL_KEY}" "QuietUninstallString" '"$INSTDIR\Uninstall.exe" /S'
  WriteRegDWORD HKCU "${UNINSTALL_KEY}" "NoModify" 1
  WriteRegDWORD HKCU "${UNINSTALL_KEY}" "NoRepair" 1
  !insertmacro RegisterBoth ""
  ${If} $Status != 0
    !insertmacro Fail "The add-in could not be registered."
  ${EndIf}
SectionEnd

; Everything goes: the registration, the files, the log, and the settings, which may hold passwords.
Section "Uninstall"
  !insertmacro RegisterBoth "/u"
  ${If} $Status != 0
    !insertmacro Fail "The add-in's registration could not be removed."
  ${EndIf}
  ${Do}
    ClearErrors
    Delete "$INSTDIR\x86\Quorvel.dll"
    Delete "$INSTDIR\x64\Quorvel.dll"
    ${IfNot} ${Errors}
      ${ExitDo}
    ${EndIf}
    ${If} ${Cmd} `MessageBox MB_RETRYCANCEL|MB_ICONEXCLAMATION "Cannot delete the add-in's files in$\r$\n$\r$\n$INSTDIR${CLOSE_EXCEL}" /SD IDCANCEL IDCANCEL`
      !insertmacro Fail "The add-in's files could not be deleted. Close Microsoft Excel and uninstall once more."
    ${EndIf}
  ${Loop}
  Delete "$INSTDIR\Uninstall.exe"
  RMDir "$INSTDIR\x86"
  RMDir "$INSTDIR\x64"
  SetOutPath "$TEMP"
  RMDir "$INSTDIR"
  Delete "$LOCALAPPDATA\Quorvel\Quorvel.log"
  RMDir "$LOCALAPPDATA\Quorvel"
  DeleteRegKey HKCU "Software\VB and VBA Program Settings\Tessaly"
  DeleteRegKey HKCU "${UNINSTALL_KEY}"
SectionEnd
