; The installer: for one person, without an administrator's rights. The calendar is never touched.
; tools/package_windows.sh says what VERSION, BEFORE, ICON, PROGRAM, LICENSE, README and OUTPUT are.
Unicode true
Target amd64-unicode ; as the program: it cannot be installed where that does not run
!include MUI2.nsh
!include LogicLib.nsh
!include FileFunc.nsh

!define KEY "Software\Microsoft\Windows\CurrentVersion\Uninstall\Orvello"
!define TYPE "Software\Classes\Orvello.Calendar"

Name "Orvello"
OutFile "${OUTPUT}"
RequestExecutionLevel user
InstallDir "$LOCALAPPDATA\Programs\Orvello"
InstallDirRegKey HKCU "${KEY}" "InstallLocation"
SetCompressor /SOLID lzma
ManifestDPIAware true
BrandingText "Orvello ${VERSION}"
VIProductVersion "${VERSION}.0"
VIAddVersionKey "ProductName" "Orvello"
VIAddVersionKey "FileDescription" "Orvello"
VIAddVersionKey "FileVersion" "${VERSION}"
VIAddVersionKey "ProductVersion" "${VERSION}"
VIAddVersionKey "LegalCopyright" "The Orvello developers"

!define MUI_ICON "${ICON}"
!define MUI_UNICON "${ICON}"
!define MUI_ABORTWARNING
!define MUI_FINISHPAGE_RUN "$INSTDIR\orvello.exe"
!insertmacro MUI_PAGE_COMPONENTS
!insertmacro MUI_PAGE_DIRECTORY
!insertmacro MUI_PAGE_INSTFILES
!insertmacro MUI_PAGE_FINISH
!insertmacro MUI_UNPAGE_CONFIRM
!insertmacro MUI_UNPAGE_INSTFILES
!insertmacro MUI_LANGUAGE "English"
!insertmacro MUI_LANGUAGE "Russian"

LangString FILES_PART ${LANG_ENGLISH} "Open calendar files (.ics)"
LangString FILES_PART ${LANG_RUSSIAN} "Открывать файлы календарей (.ics)"
LangString PROGRAM_TEXT ${LANG_ENGLISH} "The calendar, with an entry in the start menu."
LangString PROGRAM_TEXT ${LANG_RUSSIAN} "Календарь и пункт в меню «Пуск»."
LangString FILES_TEXT ${LANG_ENGLISH} "Opens .ics files with Orvello, unless you have chosen another program for them yourself. Without this it is only offered under “Open with”."
LangString FILES_TEXT ${LANG_RUSSIAN} "Открывает файлы .ics в Orvello, если вы сами не выбрали для них другую программу. Иначе Orvello будет только в списке «Открыть с помощью»."
LangString IN_USE ${LANG_ENGLISH} "Orvello is open. Close its window, then try again."
LangString IN_USE ${LANG_RUSSIAN} "Orvello открыт. Закройте его окно и повторите."
LangString KEPT ${LANG_ENGLISH} "Your calendar and settings were not removed. They are in:$\r$\n$APPDATA\Orvello"
LangString KEPT ${LANG_RUSSIAN} "Ваш календарь и настройки не удалены. Они здесь:$\r$\n$APPDATA\Orvello"

!macro WAIT_UNTIL_CLOSED
  ${Do}
    FindWindow $0 "Orvello" "Orvello"
    ${If} $0 == 0
      ${ExitDo}
    ${EndIf}
    MessageBox MB_RETRYCANCEL|MB_ICONEXCLAMATION "$(IN_USE)" /SD IDCANCEL IDRETRY +3
    SetErrorLevel 2
    Quit
  ${Loop}
!macroend

!macro TELL_SHELL
  System::Call "shell32::SHChangeNotify(i 0x08000000, i 0, p 0, p 0)"
!macroend

Section "Orvello" SECTION_PROGRAM
  SectionIn RO
  !insertmacro WAIT_UNTIL_CLOSED
  SetOutPath "$INSTDIR"
  File "/oname=orvello.exe" "${PROGRAM}"
  File "/oname=LICENSE.txt" "${LICENSE}"
  File "/oname=README.txt" "${README}"
  WriteUninstaller "$INSTDIR\uninstall.exe"
  CreateShortcut "$SMPROGRAMS\Orvello.lnk" "$INSTDIR\orvello.exe"
  WriteRegStr HKCU "${TYPE}" "" "iCalendar"
  WriteRegStr HKCU "${TYPE}\DefaultIcon" "" '"$INSTDIR\orvello.exe",0'
  WriteRegStr HKCU "${TYPE}\shell\open\command" "" '"$INSTDIR\orvello.exe" "%1"'
  WriteRegStr HKCU "Software\Classes\.ics\OpenWithProgids" "Orvello.Calendar" ""
  WriteRegStr HKCU "Software\Classes\.vcs\OpenWithProgids" "Orvello.Calendar" ""
  WriteRegStr HKCU "${KEY}" "DisplayName" "Orvello"
  WriteRegStr HKCU "${KEY}" "DisplayVersion" "${VERSION}"
  WriteRegStr HKCU "${KEY}" "DisplayIcon" "$INSTDIR\orvello.exe"
  WriteRegStr HKCU "${KEY}" "Publisher" "The Orvello developers"
  WriteRegStr HKCU "${KEY}" "InstallLocation" "$INSTDIR"
  WriteRegStr HKCU "${KEY}" "UninstallString" '"$INSTDIR\uninstall.exe"'
  WriteRegStr HKCU "${KEY}" "QuietUninstallString" '"$INSTDIR\uninstall.exe" /S'
  ${GetSize} "$INSTDIR" "/S=0K" $0 $1 $2
  WriteRegDWORD HKCU "${KEY}" "EstimatedSize" $0
  WriteRegDWORD HKCU "${KEY}" "NoModify" 1
  WriteRegDWORD HKCU "${KEY}" "NoRepair" 1
  !insertmacro TELL_SHELL
SectionEnd

; As the program's own setting does it, so that either can take it back.
Section "$(FILES_PART)" SECTION_FILES
  ReadRegStr $0 HKCU "Software\Classes\.ics" ""
  ${If} $0 != "Orvello.Calendar"
    ${If} $0 != ""
      WriteRegStr HKCU "${TYPE}" "${BEFORE}" $0
    ${EndIf}
    WriteRegStr HKCU "Software\Classes\.ics" "" "Orvello.Calendar"
  ${EndIf}
  !insertmacro TELL_SHELL
SectionEnd

!insertmacro MUI_FUNCTION_DESCRIPTION_BEGIN
  !insertmacro MUI_DESCRIPTION_TEXT ${SECTION_PROGRAM} "$(PROGRAM_TEXT)"
  !insertmacro MUI_DESCRIPTION_TEXT ${SECTION_FILES} "$(FILES_TEXT)"
!insertmacro MUI_FUNCTION_DESCRIPTION_END

Section "un.Orvello"
  !insertmacro WAIT_UNTIL_CLOSED
  Delete "$INSTDIR\orvello.exe"
  Delete "$INSTDIR\LICENSE.txt"
  Delete "$INSTDIR\README.txt"
  Delete "$INSTDIR\uninstall.exe"
  RMDir "$INSTDIR" ; only when it is empty
  Delete "$SMPROGRAMS\Orvello.lnk"
  ReadRegStr $0 HKCU "Software\Classes\.ics" ""
  ${If} $0 == "Orvello.Calendar"
    ReadRegStr $1 HKCU "${TYPE}" "${BEFORE}"
    ${If} $1 != ""
      WriteRegStr HKCU "Software\Classes\.ics" "" $1
    ${Else}
      DeleteRegValue HKCU "Software\Classes\.ics" ""
    ${EndIf}
  ${EndIf}
  DeleteRegValue HKCU "Software\Classes\.ics\OpenWithProgids" "Orvello.Calendar"
  DeleteRegValue HKCU "Software\Classes\.vcs\OpenWithProgids" "Orvello.Calendar"
  DeleteRegKey HKCU "${TYPE}"
  DeleteRegKey HKCU "${KEY}"
  !insertmacro TELL_SHELL
  ${If} ${FileExists} "$APPDATA\Orvello\*.*"
    MessageBox MB_OK|MB_ICONINFORMATION "$(KEPT)" /SD IDOK
  ${EndIf}
SectionEnd
