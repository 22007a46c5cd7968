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
; Its status is 2 when the program runs, 3 when the folder holds another program of its name.
Target ${TARGET}
SetCompressor /SOLID lzma
!include MUI2.nsh
!include FileFunc.nsh
!include LogicLib.nsh
!include Sections.nsh
!include x64.nsh

!define UNINSTALL_KEY "Software\Microsoft\Windows\CurrentVersion\Uninstall\Tallowmere32"
; Each file that was installed, with the MD5 sum of its content: one of such a name that has another
; content is the user's. It is neither replaced nor deleted.
!define FILES_KEY "${UNINSTALL_KEY}\Files"
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
!define MUI_PAGE_CUSTOMFUNCTION_LEAVE LeaveDirectoryPage
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

; $0 becomes "absent", "ours" or "foreign", $1 the sum that was noted.
!macro LookAt name
  ReadRegStr $1 HKCU "${FILES_KEY}" "${name}"
  StrCpy $0 "absent"
  ${If} ${FileExists} "$INSTDIR\${name}"
    StrCpy $0 "foreign"
    VPatch::GetFileMD5 "$INSTDIR\${name}"
    Pop $2  ; empty when it cannot be read
    ${If} $2 != ""
    ${AndIf} $2 == $1
      StrCpy $0 "ours"
    ${EndIf}
  ${EndIf}
!macroend

!macro NoteSum name
  VPatch::GetFileMD5 "$INSTDIR\${name}"
  Pop $1
  WriteRegStr HKCU "${FILES_KEY}" "${name}" $1
!macroend

Var Kept  ; names of the user's files, one a line

!macro Keep name
  DetailPrint "Kept: ${name}"
  StrCpy $Kept "$Kept$\r$\n${name}"
!macroend

!macro TellKept text
  ${If} $Kept != ""
    MessageBox MB_OK|MB_ICONINFORMATION "${text}$\r$\n$Kept" /SD IDOK
  ${EndIf}
!macroend

!macro Install name
  !insertmacro LookAt "${name}"
  ${If} $0 == "foreign"
    !insertmacro Keep "${name}"
  ${Else}
    File "${FILES}/${name}"
    !insertmacro NoteSum "${name}"
  ${EndIf}
!macroend

!macro Uninstall name
  !insertmacro LookAt "${name}"
  ${If} $0 == "ours"
    Delete "$INSTDIR\${name}"
  ${ElseIf} $0 == "foreign"
  ${AndIf} $1 != ""
    !insertmacro Keep "${name}"
  ${EndIf}
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

; Setups of version 2.1 once noted no sums: what stands in their folder is taken for theirs.
Function NoteOlderFiles
  EnumRegValue $0 HKCU "${FILES_KEY}" 0
  ReadRegStr $1 HKCU "${UNINSTALL_KEY}" "InstallLocation"
  ${If} $0 == ""
  ${AndIf} $1 == $INSTDIR
    !insertmacro NoteSum "Tallowmere32.exe"
    !insertmacro NoteSum "tallowmere-find.exe"
    !insertmacro NoteSum "s_done.wav"
    !insertmacro NoteSum "ReadMe.txt"
    !insertmacro NoteSum "uninstall.exe"
  ${EndIf}
FunctionEnd

; $5 becomes the name of a user's file without whose place nothing can be installed, or empty.
Function FindObstacle
  Call NoteOlderFiles
  StrCpy $5 ""
  !insertmacro LookAt "uninstall.exe"
  ${If} $0 == "foreign"
    StrCpy $5 "uninstall.exe"
  ${EndIf}
  !insertmacro LookAt "Tallowmere32.exe"
  ${If} $0 == "foreign"
    StrCpy $5 "Tallowmere32.exe"
  ${EndIf}
FunctionEnd

Function LeaveDirectoryPage
  Call FindObstacle
  ${If} $5 != ""
    MessageBox MB_OK|MB_ICONEXCLAMATION "$INSTDIR contains another $5, which this setup did \
      not install. It stays as it is. Choose another folder."
    Abort
  ${EndIf}
FunctionEnd

Section "Tallowmere 32" ProgramSection
  SectionIn RO
  Call FindObstacle
  ${If} $5 != ""
    SetErrorLevel 3
    Abort "The folder contains another $5."
  ${EndIf}
  !insertmacro RequireClosedProgram
  SetOutPath "$INSTDIR"
  !insertmacro Install "Tallowmere32.exe"
  !insertmacro Install "tallowmere-find.exe"
  !insertmacro Install "s_done.wav"
  !insertmacro Install "ReadMe.txt"
  WriteUninstaller "$INSTDIR\uninstall.exe"
  !insertmacro NoteSum "uninstall.exe"
  !insertmacro TellKept "These files in $INSTDIR were not installed by this setup, or \
    were changed since. They stay as they are:"
  CreateShortcut "${SHORTCUT}" "${PROGRAM}" "" "" "" "" "" \
    "Searches the contents of files for words and phrases"
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

Section '"Search with Tallowmere" in Explorer' ExplorerSection
  !insertmacro AddToExplorer "Directory"
  !insertmacro AddToExplorer "Drive"
SectionEnd

!insertmacro MUI_FUNCTION_DESCRIPTION_BEGIN
  !insertmacro MUI_DESCRIPTION_TEXT ${ProgramSection} \
    "The program, an entry in the Start menu and tallowmere-find, which is not added to PATH."
  !insertmacro MUI_DESCRIPTION_TEXT ${ExplorerSection} \
    "A menu entry on folders and drives that starts the program with that folder."
!insertmacro MUI_FUNCTION_DESCRIPTION_END

Function .onInit
!if "${TARGET}" == "x86-unicode"
  ; Nobody can be asked by /S: it installs what was started.
  ${If} ${IsNativeAMD64}
  ${AndIf} ${Cmd} `MessageBox MB_YESNO|MB_ICONQUESTION|MB_DEFBUTTON2 \
      "This setup is for 32-bit Windows. Your Windows is 64-bit: use \
      Tallowmere32-${VERSION}-setup.exe for it.$\r$\n$\r$\nInstall the 32-bit program \
      anyway?" /SD IDYES IDNO`
    Abort
  ${EndIf}
!endif
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
  !insertmacro Uninstall "Tallowmere32.exe"
  !insertmacro Uninstall "tallowmere-find.exe"
  !insertmacro Uninstall "s_done.wav"
  !insertmacro Uninstall "ReadMe.txt"
  !insertmacro Uninstall "uninstall.exe"
  !insertmacro TellKept "These files were changed after they were installed. They stay in \
    $INSTDIR:"
  RMDir "$INSTDIR"
  Delete "${SHORTCUT}"
  !insertmacro RemoveFromExplorer "Directory"
  !insertmacro RemoveFromExplorer "Drive"
  DeleteRegKey HKCU "${UNINSTALL_KEY}"
SectionEnd
