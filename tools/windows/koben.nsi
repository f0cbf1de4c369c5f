; The setup: for the user who runs it, without the administrator's rights. An older version is replaced in its place; the
; data and the user's settings are never touched.
Unicode true
Target amd64-unicode
SetCompressor /SOLID lzma
ManifestDPIAware true
!include MUI2.nsh
!include LogicLib.nsh

Name "KOBEN"
Caption "KOBEN ${VERSION} einrichten"
BrandingText "KOBEN ${VERSION}"
OutFile "${ZIEL}"
RequestExecutionLevel user
InstallDir "$LOCALAPPDATA\Programs\KOBEN"
InstallDirRegKey HKCU "Software\KOBEN" "Ordner"

!define MUI_ICON "${ICON}"
!define MUI_UNICON "${ICON}"
!define MUI_WELCOMEPAGE_TITLE "KOBEN ${VERSION}"
!define MUI_WELCOMEPAGE_TEXT "KOBEN wird für Ihr Benutzerkonto eingerichtet; Administratorrechte sind nicht nötig.$\r$\n$\r$\nIst schon eine Version eingerichtet, so wird sie ersetzt. Ihre Daten und Einstellungen bleiben, wie sie sind.$\r$\n$\r$\nBitte beenden Sie KOBEN, falls es noch läuft."
!insertmacro MUI_PAGE_WELCOME
!define MUI_DIRECTORYPAGE_TEXT_TOP "Das Programm kommt in diesen Ordner. Ihre Daten liegen auf demselben Laufwerk im Ordner \Daten\Sauenplaner_KOBEN2."
!insertmacro MUI_PAGE_DIRECTORY
!insertmacro MUI_PAGE_INSTFILES
!define MUI_FINISHPAGE_RUN "$INSTDIR\bin\koben.exe"
!define MUI_FINISHPAGE_RUN_TEXT "KOBEN starten"
!insertmacro MUI_PAGE_FINISH
!define MUI_UNCONFIRMPAGE_TEXT_TOP "KOBEN wird von diesem Rechner entfernt. Ihre Daten im Ordner \Daten\Sauenplaner_KOBEN2 und Ihre Einstellungen bleiben erhalten."
!insertmacro MUI_UNPAGE_CONFIRM
!insertmacro MUI_UNPAGE_INSTFILES
!insertmacro MUI_LANGUAGE "German"

VIProductVersion "${VERSION}.0"
VIAddVersionKey "CompanyName" "KOBEN"
VIAddVersionKey "ProductName" "KOBEN"
VIAddVersionKey "ProductVersion" "${VERSION}"
VIAddVersionKey "FileVersion" "${VERSION}"
VIAddVersionKey "FileDescription" "KOBEN einrichten"
VIAddVersionKey "LegalCopyright" ""

!define ENTFERNEN "Software\Microsoft\Windows\CurrentVersion\Uninstall\KOBEN"

; Windows lets nobody write into a program that runs. Status 3 where it does.
!macro BEENDET un
  Function ${un}Beendet
    wieder:
    IfFileExists "$INSTDIR\bin\koben.exe" 0 frei
    ClearErrors
    FileOpen $0 "$INSTDIR\bin\koben.exe" a
    IfErrors laeuft
    FileClose $0
    frei:
    Return
    laeuft:
    MessageBox MB_RETRYCANCEL|MB_ICONEXCLAMATION "KOBEN läuft noch. Bitte beenden Sie KOBEN und wählen Sie dann Wiederholen." /SD IDCANCEL IDRETRY wieder
    SetErrorLevel 3
    Quit
  FunctionEnd
!macroend
!insertmacro BEENDET ""
!insertmacro BEENDET "un."

; The program's files, of this version or an older one. Only from a folder that a setup has made.
!macro RAEUMEN
  RMDir /r "$INSTDIR\bin"
  RMDir /r "$INSTDIR\plugins"
  RMDir /r "$INSTDIR\translations"
  RMDir /r "$INSTDIR\share\koben"
  RMDir "$INSTDIR\share"
  RMDir /r "$INSTDIR\lizenzen"
!macroend

Section
  Call Beendet
  ${If} ${FileExists} "$INSTDIR\entfernen.exe"
    !insertmacro RAEUMEN
  ${EndIf}
  SetOutPath "$INSTDIR"
  File /r "${QUELLE}/*"
  WriteUninstaller "$INSTDIR\entfernen.exe"
  SetOutPath "$INSTDIR\bin"
  CreateShortcut "$SMPROGRAMS\KOBEN.lnk" "$INSTDIR\bin\koben.exe" "" "" "" "" "" "KOBEN - der Sauenplaner"
  WriteRegStr HKCU "Software\KOBEN" "Ordner" "$INSTDIR"
  WriteRegStr HKCU "${ENTFERNEN}" "DisplayName" "KOBEN - der Sauenplaner"
  WriteRegStr HKCU "${ENTFERNEN}" "DisplayVersion" "${VERSION}"
  WriteRegStr HKCU "${ENTFERNEN}" "Publisher" "KOBEN"
  WriteRegStr HKCU "${ENTFERNEN}" "DisplayIcon" "$INSTDIR\bin\koben.exe"
  WriteRegStr HKCU "${ENTFERNEN}" "InstallLocation" "$INSTDIR"
  WriteRegStr HKCU "${ENTFERNEN}" "UninstallString" '"$INSTDIR\entfernen.exe"'
  WriteRegStr HKCU "${ENTFERNEN}" "QuietUninstallString" '"$INSTDIR\entfernen.exe" /S'
  WriteRegDWORD HKCU "${ENTFERNEN}" "EstimatedSize" ${GROESSE}
  WriteRegDWORD HKCU "${ENTFERNEN}" "NoModify" 1
  WriteRegDWORD HKCU "${ENTFERNEN}" "NoRepair" 1
SectionEnd

Section Uninstall
  Call un.Beendet
  Delete "$SMPROGRAMS\KOBEN.lnk"
  !insertmacro RAEUMEN
  Delete "$INSTDIR\entfernen.exe"
  RMDir "$INSTDIR"
  DeleteRegKey HKCU "${ENTFERNEN}"
  DeleteRegValue HKCU "Software\KOBEN" "Ordner"
SectionEnd
