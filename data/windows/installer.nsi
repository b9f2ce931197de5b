; The installer: for one user without further rights, or for all. It runs silently with /S, then for
; the user, or with /AllUsers for all; /D=FOLDER, as the last word, names another folder, and
; /irc also gives links that begin with irc: to Brindle. The uninstaller leaves what users made.
;   makensis -DVERSION=0.5.85 -DROOT=<the repository> installer.nsi
Target amd64-unicode
SetCompressor /SOLID lzma

!define MULTIUSER_EXECUTIONLEVEL Highest
!define MULTIUSER_MUI
!define MULTIUSER_INSTALLMODE_COMMANDLINE
!define MULTIUSER_INSTALLMODE_DEFAULT_CURRENTUSER
!define MULTIUSER_INSTALLMODE_INSTDIR "Brindle"
!define MULTIUSER_USE_PROGRAMFILES64
!define UNINSTALL_KEY "Software\Microsoft\Windows\CurrentVersion\Uninstall\Brindle"
!define MULTIUSER_INSTALLMODE_DEFAULT_REGISTRY_KEY "${UNINSTALL_KEY}"
!define MULTIUSER_INSTALLMODE_DEFAULT_REGISTRY_VALUENAME "DisplayIcon"
!define MULTIUSER_INSTALLMODE_INSTDIR_REGISTRY_KEY "${UNINSTALL_KEY}"
!define MULTIUSER_INSTALLMODE_INSTDIR_REGISTRY_VALUENAME "InstallLocation"
!include MultiUser.nsh
!include MUI2.nsh
!include FileFunc.nsh
!include LogicLib.nsh
!include Sections.nsh

Name "Brindle"
OutFile "${ROOT}/dist/windows/brindle-setup.exe"
BrandingText "Brindle ${VERSION}"
VIProductVersion "${VERSION}.0"
VIAddVersionKey "ProductName" "Brindle"
VIAddVersionKey "ProductVersion" "${VERSION}"
VIAddVersionKey "FileVersion" "${VERSION}"
VIAddVersionKey "FileDescription" "Installs Brindle"
VIAddVersionKey "CompanyName" "The Brindle developers"
VIAddVersionKey "LegalCopyright" "MIT licence"
ManifestDPIAware true
ManifestSupportedOS Win10

!define MUI_ICON "${ROOT}/data/icons/brindle.ico"
!define MUI_UNICON "${ROOT}/data/icons/brindle.ico"
!define MUI_FINISHPAGE_RUN "$INSTDIR\brindle.exe"
!insertmacro MUI_PAGE_LICENSE "${ROOT}/LICENSE"
!insertmacro MULTIUSER_PAGE_INSTALLMODE
!insertmacro MUI_PAGE_COMPONENTS
!insertmacro MUI_PAGE_DIRECTORY
!insertmacro MUI_PAGE_INSTFILES
!insertmacro MUI_PAGE_FINISH
!insertmacro MUI_UNPAGE_CONFIRM
!insertmacro MUI_UNPAGE_INSTFILES
!insertmacro MUI_LANGUAGE "English"

; A running program cannot be written over: then the old file steps aside, until the next start of
; the machine at the latest.
!macro MoveAside name
  Delete "$INSTDIR\${name}.old"
  ${If} ${FileExists} "$INSTDIR\${name}"
    ClearErrors
    Delete "$INSTDIR\${name}"
    ${If} ${Errors}
      Rename "$INSTDIR\${name}" "$INSTDIR\${name}.old"
      Delete /REBOOTOK "$INSTDIR\${name}.old"
    ${EndIf}
  ${EndIf}
!macroend

Section "Brindle"
  SectionIn RO
  SetOutPath "$INSTDIR"
  !insertmacro MoveAside brindle.exe
  !insertmacro MoveAside updater.exe
  File "${ROOT}/dist/windows/brindle.exe"
  File "${ROOT}/dist/windows/updater.exe"
  File "/oname=LICENSE.txt" "${ROOT}/LICENSE"
  File "/oname=NOTICE.txt" "${ROOT}/NOTICE"
  CreateShortcut "$SMPROGRAMS\Brindle.lnk" "$INSTDIR\brindle.exe"
  WriteUninstaller "$INSTDIR\uninstall.exe"
  WriteRegStr SHCTX "${UNINSTALL_KEY}" "DisplayName" "Brindle"
  WriteRegStr SHCTX "${UNINSTALL_KEY}" "DisplayVersion" "${VERSION}"
  WriteRegStr SHCTX "${UNINSTALL_KEY}" "DisplayIcon" "$INSTDIR\brindle.exe"
  WriteRegStr SHCTX "${UNINSTALL_KEY}" "Publisher" "The Brindle developers"
  WriteRegStr SHCTX "${UNINSTALL_KEY}" "InstallLocation" "$INSTDIR"
  WriteRegStr SHCTX "${UNINSTALL_KEY}" "UninstallString" '"$INSTDIR\uninstall.exe" /$MultiUser.InstallMode'
  WriteRegStr SHCTX "${UNINSTALL_KEY}" "QuietUninstallString" '"$INSTDIR\uninstall.exe" /$MultiUser.InstallMode /S'
  WriteRegDWORD SHCTX "${UNINSTALL_KEY}" "NoModify" 1
  WriteRegDWORD SHCTX "${UNINSTALL_KEY}" "NoRepair" 1
  ${GetSize} "$INSTDIR" "/S=0K" $0 $1 $2
  IntFmt $0 "0x%08X" $0
  WriteRegDWORD SHCTX "${UNINSTALL_KEY}" "EstimatedSize" "$0"
SectionEnd

Section /o "Open irc: links with Brindle" sectionLinks
  WriteRegStr SHCTX "Software\Classes\irc" "" "URL:IRC"
  WriteRegStr SHCTX "Software\Classes\irc" "URL Protocol" ""
  WriteRegStr SHCTX "Software\Classes\irc\DefaultIcon" "" "$INSTDIR\brindle.exe,0"
  WriteRegStr SHCTX "Software\Classes\irc\shell\open\command" "" '"$INSTDIR\brindle.exe" "%1"'
SectionEnd

Function .onInit
  SetRegView 64
  !insertmacro MULTIUSER_INIT
  ${GetParameters} $0
  ClearErrors
  ${GetOptions} $0 "/irc" $1
  ${IfNot} ${Errors}
    !insertmacro SelectSection ${sectionLinks}
  ${EndIf}
FunctionEnd

Function un.onInit
  SetRegView 64
  !insertmacro MULTIUSER_UNINIT
FunctionEnd

Section "Uninstall"
  Delete "$INSTDIR\brindle.exe"
  Delete "$INSTDIR\brindle.exe.old"
  Delete "$INSTDIR\updater.exe"
  Delete "$INSTDIR\updater.exe.old"
  Delete "$INSTDIR\LICENSE.txt"
  Delete "$INSTDIR\NOTICE.txt"
  Delete "$INSTDIR\uninstall.exe"
  ; Only when nothing of the user's is in it.
  RMDir "$INSTDIR"
  Delete "$SMPROGRAMS\Brindle.lnk"
  ; Only when they are still ours.
  ReadRegStr $0 SHCTX "Software\Classes\irc\shell\open\command" ""
  ${If} $0 == '"$INSTDIR\brindle.exe" "%1"'
    DeleteRegKey SHCTX "Software\Classes\irc"
  ${EndIf}
  DeleteRegKey SHCTX "${UNINSTALL_KEY}"
SectionEnd
