; The installer. ./package calls makensis with
;   TARGET    amd64-unicode or x86-unicode
;   VERSION   such as 2.1
;   FILES     folder with the files to install
;   ICON      tallowmere.ico
;   PICTURE   bitmap of the last page
;   OUTPUT    the installer to make
;
; For one user, without an administrator: everything goes below the user's own folders and keys.
; Besides the switches of every such installer (/S silent, /D=FOLDER) it knows /NOEXPLORER.
Target ${TARGET}
SetCompressor /SOLID lzma
!include MUI2.nsh
!include FileFunc.nsh
!include LogicLib.nsh
!include Sections.nsh

!define UNINSTALL_KEY "Software\Microsoft\Windows\CurrentVersion\Uninstall\Tallowmere32"
!define PROGRAM "$INSTDIR\Tallowmere32.exe"
!define SHORTCUT "$SMPROGRAMS\Tallowmere 32.lnk"

Name "Tallowmere 32"
OutFile "${OUTPUT}"
RequestExecutionLevel user
InstallDir "$LOCALAPPDATA\Programs\Tallowmere32"
InstallDirRegKey HKCU "${UNINSTALL_KEY}" "InstallLocation"
ManifestDPIAware true
ManifestSupportedOS all
BrandingText "Tallowmere 32 - Version ${VERSION}"

VIProductVersion "${VERSION}.0.0"
VIAddVersionKey "ProductName" "Tallowmere 32"
VIAddVersionKey "FileDescription" "Installs Tallowmere 32"
VIAddVersionKey "FileVersion" "${VERSION}"
VIAddVersionKey "ProductVersion" "${VERSION}"
VIAddVersionKey "CompanyName" "Tallowmere"
VIAddVersionKey "LegalCopyright" ""

!define MUI_ICON "${ICON}"
!define MUI_UNICON "${ICON}"
!define MUI_WELCOMEFINISHPAGE_BITMAP "${PICTURE}"
!define MUI_COMPONENTSPAGE_SMALLDESC
!define MUI_FINISHPAGE_RUN "${PROGRAM}"
!insertmacro MUI_PAGE_COMPONENTS
!insertmacro MUI_PAGE_DIRECTORY
!insertmacro MUI_PAGE_INSTFILES
!insertmacro MUI_PAGE_FINISH
!insertmacro MUI_UNPAGE_CONFIRM
!insertmacro MUI_UNPAGE_INSTFILES
!insertmacro MUI_LANGUAGE "English"

; A program that runs cannot be replaced or deleted: asks to close it, or gives up with status 2.
!macro RequireClosedProgram
  ${DoWhile} ${FileExists} "${PROGRAM}"
    ClearErrors
    FileOpen $0 "${PROGRAM}" a
    ${IfNot} ${Errors}
      FileClose $0
      ${ExitDo}
    ${EndIf}
    ${If} ${Cmd} `MessageBox MB_RETRYCANCEL|MB_ICONEXCLAMATION \
        "Tallowmere 32 is running. Close it and press Retry." /SD IDCANCEL IDCANCEL`
      SetErrorLevel 2
      Abort "Tallowmere 32 is running."
    ${EndIf}
  ${Loop}
!macroend

; Explorer's menu on the folders, or drives, of a class.
!macro AddToExplorer class
  WriteRegStr HKCU "Software\Classes\${class}\shell\Tallowmere32" "" "Search with Tallowmere"
  WriteRegStr HKCU "Software\Classes\${class}\shell\Tallowmere32" "Icon" "${PROGRAM},0"
  WriteRegStr HKCU "Software\Classes\${class}\shell\Tallowmere32" "MultiSelectModel" "Single"
  WriteRegStr HKCU "Software\Classes\${class}\shell\Tallowmere32\command" "" \
    '"${PROGRAM}" "%1"'
!macroend

!macro RemoveFromExplorer class
  DeleteRegKey HKCU "Software\Classes\${class}\shell\Tallowmere32"
!macroend

Section "Tallowmere 32" ProgramSection
  SectionIn RO
  !insertmacro RequireClosedProgram
  SetOutPath "$INSTDIR"
  File "${FILES}/Tallowmere32.exe"
  File "${FILES}/tallowmere-find.exe"
  File "${FILES}/s_done.wav"
  File "${FILES}/ReadMe.txt"
  WriteUninstaller "$INSTDIR\uninstall.exe"
  CreateShortcut "${SHORTCUT}" "${PROGRAM}" "" "" "" "" "" \
    "Searches the contents of files"
  ; Chosen before, but not this time.
  !insertmacro RemoveFromExplorer "Directory"
  !insertmacro RemoveFromExplorer "Drive"

  WriteRegStr HKCU "${UNINSTALL_KEY}" "DisplayName" "Tallowmere 32"
  WriteRegStr HKCU "${UNINSTALL_KEY}" "DisplayVersion" "${VERSION}"
  WriteRegStr HKCU "${UNINSTALL_KEY}" "DisplayIcon" "${PROGRAM}"
  WriteRegStr HKCU "${UNINSTALL_KEY}" "Publisher" "Tallowmere"
  WriteRegStr HKCU "${UNINSTALL_KEY}" "InstallLocation" "$INSTDIR"
  WriteRegStr HKCU "${UNINSTALL_KEY}" "UninstallString" '"$INSTDIR\uninstall.exe"'
  WriteRegStr HKCU "${UNINSTALL_KEY}" "QuietUninstallString" '"$INSTDIR\uninstall.exe" /S'
  WriteRegDWORD HKCU "${UNINSTALL_KEY}" "NoModify" 1
  WriteRegDWORD HKCU "${UNINSTALL_KEY}" "NoRepair" 1
  SectionGetSize ${ProgramSection} $0
  WriteRegDWORD HKCU "${UNINSTALL_KEY}" "EstimatedSize" $0
SectionEnd

Section '"Search with Tallowmere" on folders in Explorer' ExplorerSection
  !insertmacro AddToExplorer "Directory"
  !insertmacro AddToExplorer "Drive"
SectionEnd

!insertmacro MUI_FUNCTION_DESCRIPTION_BEGIN
  !insertmacro MUI_DESCRIPTION_TEXT ${ProgramSection} \
    "The program, tallowmere-find for the command line, and an entry in the Start menu."
  !insertmacro MUI_DESCRIPTION_TEXT ${ExplorerSection} \
    "An entry in the menu of every folder and drive. It starts the program with that folder."
!insertmacro MUI_FUNCTION_DESCRIPTION_END

Function .onInit
  ${GetParameters} $0
  ClearErrors
  ${GetOptions} $0 "/NOEXPLORER" $1
  ${IfNot} ${Errors}
    !insertmacro UnselectSection ${ExplorerSection}
  ${EndIf}
FunctionEnd

; Takes away only what was installed: whatever else is in the folder is the user's. The settings
; stay for the next time.
Section "Uninstall"
  !insertmacro RequireClosedProgram
  Delete "${PROGRAM}"
  Delete "$INSTDIR\tallowmere-find.exe"
  Delete "$INSTDIR\s_done.wav"
  Delete "$INSTDIR\ReadMe.txt"
  Delete "$INSTDIR\uninstall.exe"
  RMDir "$INSTDIR"
  Delete "${SHORTCUT}"
  !insertmacro RemoveFromExplorer "Directory"
  !insertmacro RemoveFromExplorer "Drive"
  DeleteRegKey HKCU "${UNINSTALL_KEY}"
SectionEnd
