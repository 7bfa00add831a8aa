; SPDX-License-Identifier: GPL-3.0-or-later
; The installer; packaging/windows/build defines VERSION, PUBLISHER, LAYOUT (the folder with what is
; to be installed), FILES (a list of commands that take all of that away again), ICON and OUTPUT.
;
; It lays out the program and the template of its folder, and nothing of the user's: the program
; brings the web application itself, and knows what was changed in it. So an upgrade and a removal
; leave config.cfg, nav\ and whatever else came into being there.
Unicode true
Target amd64-unicode
SetCompressor /SOLID lzma
RequestExecutionLevel user

!include MUI2.nsh
!include FileFunc.nsh

!define REMOVAL "Software\Microsoft\Windows\CurrentVersion\Uninstall\Tavrollo"
!define RUN "Software\Microsoft\Windows\CurrentVersion\Run"
!define FONTS "Software\Microsoft\Windows NT\CurrentVersion\Fonts"

Name "Tavrollo"
OutFile "${OUTPUT}"
; The user's own folder, where he may write: it becomes the program folder.
InstallDir "$PROFILE\Tavrollo"
InstallDirRegKey HKCU "Software\Tavrollo" "Folder"

VIProductVersion "${VERSION}.0"
VIAddVersionKey "ProductName" "Tavrollo"
VIAddVersionKey "FileDescription" "Installation de Tavrollo"
VIAddVersionKey "FileVersion" "${VERSION}"
VIAddVersionKey "LegalCopyright" "GPL-3.0-or-later"

!define MUI_ICON "${ICON}"
!define MUI_UNICON "${ICON}"
!define MUI_ABORTWARNING
!define MUI_FINISHPAGE_RUN "$INSTDIR\Tavrollo.exe"
!insertmacro MUI_PAGE_DIRECTORY
!insertmacro MUI_PAGE_INSTFILES
!insertmacro MUI_PAGE_FINISH
!insertmacro MUI_UNPAGE_CONFIRM
!insertmacro MUI_UNPAGE_INSTFILES
!insertmacro MUI_LANGUAGE "French"

; Waits until no instance holds the program's file. A silent run ends with 3 instead.
!macro RequireEnded UN
Function ${UN}RequireEnded
  again:
  IfFileExists "$INSTDIR\Tavrollo.exe" 0 free
  ClearErrors
  FileOpen $0 "$INSTDIR\Tavrollo.exe" a
  IfErrors busy
  FileClose $0
  Goto free
  busy:
  IfSilent 0 ask
  SetErrorLevel 3
  Abort "Tavrollo est lancé : quittez-le par son menu."
  ask:
  MessageBox MB_RETRYCANCEL|MB_ICONEXCLAMATION "Tavrollo est lancé.$\r$\n$\r$\nQuittez-le par son menu, puis cliquez sur Recommencer." IDRETRY again
  Abort
  free:
FunctionEnd
!macroend
!insertmacro RequireEnded ""
!insertmacro RequireEnded "un."

!macro TakeFontAway FILE NAME
  System::Call 'gdi32::RemoveFontResource(t "$INSTDIR\fonts\${FILE}")'
  DeleteRegValue HKCU "${FONTS}" "${NAME} (TrueType)"
!macroend
!macro GiveFont FILE NAME
  System::Call 'gdi32::AddFontResource(t "$INSTDIR\fonts\${FILE}")'
  WriteRegStr HKCU "${FONTS}" "${NAME} (TrueType)" "$INSTDIR\fonts\${FILE}"
!macroend
!macro EachFont DO
  !insertmacro ${DO} "Code3de9.ttf" "Code 3 de 9"
  !insertmacro ${DO} "Code3de9Lab.ttf" "Code 3 de 9 Lab"
  !insertmacro ${DO} "CodeEAN13.ttf" "Code EAN13"
  !insertmacro ${DO} "Code2of5interleaved.ttf" "Code 2 of 5 interleaved"
  !insertmacro ${DO} "Code128.ttf" "Code 128"
!macroend

; The start with the session, when it is this installation's.
Function un.EndAutostart
  ReadRegStr $0 HKCU "${RUN}" "Tavrollo"
  StrCpy $1 "$INSTDIR\Tavrollo.exe"
  StrLen $2 $1
  StrCpy $3 $0 $2
  StrCmp $3 $1 ours
  StrCpy $3 $0 $2 1  ; behind a quotation mark
  StrCmp $3 $1 ours
  Return
  ours:
  DeleteRegValue HKCU "${RUN}" "Tavrollo"
FunctionEnd

Section
  Call RequireEnded
  ; What an earlier version laid out, it knows best itself.
  IfFileExists "$INSTDIR\uninstall.exe" 0 cleared
  ExecWait '"$INSTDIR\uninstall.exe" /S /UPGRADE _?=$INSTDIR'
  cleared:
  ClearErrors
  SetOutPath "$INSTDIR"
  File /r "${LAYOUT}\*"
  CreateDirectory "$INSTDIR\nav"  ; empty: the program takes this for its folder, and fills it
  IfErrors 0 written
  SetErrorLevel 4
  Abort "Tavrollo n'a pas pu être installé dans $INSTDIR."
  written:
  !insertmacro EachFont GiveFont
  SendMessage 0xFFFF ${WM_FONTCHANGE} 0 0 /TIMEOUT=1000

  CreateShortcut "$SMPROGRAMS\Tavrollo.lnk" "$INSTDIR\Tavrollo.exe"
  WriteUninstaller "$INSTDIR\uninstall.exe"
  WriteRegStr HKCU "Software\Tavrollo" "Folder" "$INSTDIR"
  WriteRegStr HKCU "${REMOVAL}" "DisplayName" "Tavrollo"
  WriteRegStr HKCU "${REMOVAL}" "DisplayVersion" "${VERSION}"
  WriteRegStr HKCU "${REMOVAL}" "DisplayIcon" "$INSTDIR\Tavrollo.exe"
  WriteRegStr HKCU "${REMOVAL}" "Publisher" "${PUBLISHER}"
  WriteRegStr HKCU "${REMOVAL}" "InstallLocation" "$INSTDIR"
  WriteRegStr HKCU "${REMOVAL}" "UninstallString" '"$INSTDIR\uninstall.exe"'
  WriteRegStr HKCU "${REMOVAL}" "QuietUninstallString" '"$INSTDIR\uninstall.exe" /S'
  WriteRegDWORD HKCU "${REMOVAL}" "NoModify" 1
  WriteRegDWORD HKCU "${REMOVAL}" "NoRepair" 1
  ${GetSize} "$INSTDIR" "/S=0K" $0 $1 $2
  WriteRegDWORD HKCU "${REMOVAL}" "EstimatedSize" $0
SectionEnd

Section "Uninstall"
  Call un.RequireEnded
  !insertmacro EachFont TakeFontAway
  SendMessage 0xFFFF ${WM_FONTCHANGE} 0 0 /TIMEOUT=1000
  !include "${FILES}"
  Delete "$INSTDIR\uninstall.exe"
  Delete "$SMPROGRAMS\Tavrollo.lnk"
  ${GetParameters} $0
  ClearErrors
  ${GetOptions} $0 "/UPGRADE" $1
  IfErrors 0 kept
  Call un.EndAutostart
  kept:
  DeleteRegKey HKCU "${REMOVAL}"
  DeleteRegKey HKCU "Software\Tavrollo"
  ; Only what is empty goes: the rest is the user's.
  RMDir "$INSTDIR\nav"
  RMDir "$INSTDIR"
SectionEnd
