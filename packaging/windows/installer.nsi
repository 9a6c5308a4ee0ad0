; SPDX-License-Identifier: Apache-2.0
; The installer for Windows, of what is in the archive: makensis -DVERSION=... -DFILES=... -DICON=... -DOUTPUT=...
; FILES is a folder with two lists that installer.py writes: install.nsh and uninstall.nsh.
;
; /S asks nothing; /PATH and /SERVICE choose with it what is not chosen otherwise, /D=FOLDER is where it goes.
Target amd64-unicode
SetCompressor /SOLID lzma
RequestExecutionLevel admin
Name "MultiChannelServer"
OutFile "${OUTPUT}"
InstallDir "$PROGRAMFILES64\MultiChannelServer"
ManifestDPIAware true

!define KEY "Software\MultiChannelServer"
!define LISTED "Software\Microsoft\Windows\CurrentVersion\Uninstall\MultiChannelServer"
!define ENVIRONMENT "SYSTEM\CurrentControlSet\Control\Session Manager\Environment"
!define SERVICES "SYSTEM\CurrentControlSet\Services"

!include MUI2.nsh
!include FileFunc.nsh
!include LogicLib.nsh
!include WordFunc.nsh
!include x64.nsh

!define MUI_ABORTWARNING
!define MUI_COMPONENTSPAGE_SMALLDESC
!insertmacro MUI_PAGE_LICENSE "${FILES}\..\LICENSE"
!insertmacro MUI_PAGE_COMPONENTS
!insertmacro MUI_PAGE_DIRECTORY
!insertmacro MUI_PAGE_INSTFILES
!insertmacro MUI_UNPAGE_CONFIRM
!insertmacro MUI_UNPAGE_INSTFILES
!insertmacro MUI_LANGUAGE "English"
!insertmacro MUI_LANGUAGE "German"

LangString AboutPrograms ${LANG_ENGLISH} "Server, console, command line, simulated modules, documents"
LangString AboutPrograms ${LANG_GERMAN} "Server, Konsole, Befehlszeile, simulierte Module, Dokumente"
LangString AboutMenu ${LANG_ENGLISH} "Console and documents in the start menu"
LangString AboutMenu ${LANG_GERMAN} "Konsole und Dokumente im Startmenü"
LangString AboutPath ${LANG_ENGLISH} "mctree and the other programs in every new console window"
LangString AboutPath ${LANG_GERMAN} "mctree und die anderen Programme in jedem neuen Konsolenfenster"
LangString AboutService ${LANG_ENGLISH} "The server as a service on 127.0.0.1:7450, started with the system"
LangString AboutService ${LANG_GERMAN} "Der Server als Dienst an 127.0.0.1:7450, der mit dem System startet"
LangString Needs64 ${LANG_ENGLISH} "This needs a 64-bit Windows."
LangString Needs64 ${LANG_GERMAN} "Dies braucht ein 64-Bit-Windows."
LangString PathTooLong ${LANG_ENGLISH} "The search path is too long to be changed safely and stays as it is."
LangString PathTooLong ${LANG_GERMAN} "Der Suchpfad ist zu lang, um sicher geändert zu werden, und bleibt, wie er ist."

; Into $0 the search path, or an error where it is longer than what is read here, which would cut it.
!macro READ_PATH
  System::Call 'advapi32::RegGetValueW(p 0x80000002, w "${ENVIRONMENT}", w "Path", i 0x10000006, p 0, p 0, *i .r1) i .r2'
  ClearErrors
  ${If} $2 <> 0
  ${OrIf} $1 > 1600
    DetailPrint "$(PathTooLong)"
    SetErrors
  ${Else}
    ReadRegStr $0 HKLM "${ENVIRONMENT}" "Path"
  ${EndIf}
!macroend
!macro WRITE_PATH
  WriteRegExpandStr HKLM "${ENVIRONMENT}" "Path" "$0"
  SendMessage 0xFFFF 0x001A 0 "STR:Environment" /TIMEOUT=2000
!macroend

Section "MultiChannelServer" Programs
  SectionIn RO
  Call GiveWay
  !include "${FILES}\install.nsh"
  SetOutPath "$INSTDIR"
  WriteUninstaller "$INSTDIR\uninstall.exe"
  WriteRegStr HKLM "${KEY}" "Folder" "$INSTDIR"
  WriteRegStr HKLM "${LISTED}" "DisplayName" "MultiChannelServer"
  WriteRegStr HKLM "${LISTED}" "DisplayVersion" "${VERSION}"
  WriteRegStr HKLM "${LISTED}" "DisplayIcon" "$INSTDIR\uninstall.exe"
  WriteRegStr HKLM "${LISTED}" "InstallLocation" "$INSTDIR"
  WriteRegStr HKLM "${LISTED}" "UninstallString" '"$INSTDIR\uninstall.exe"'
  WriteRegStr HKLM "${LISTED}" "QuietUninstallString" '"$INSTDIR\uninstall.exe" /S'
  WriteRegDWORD HKLM "${LISTED}" "NoModify" 1
  WriteRegDWORD HKLM "${LISTED}" "NoRepair" 1
  ${GetSize} "$INSTDIR" "/S=0K" $0 $1 $2
  IntFmt $0 "0x%08X" $0
  WriteRegDWORD HKLM "${LISTED}" "EstimatedSize" "$0"
SectionEnd

Section "Start menu" Menu
  SetShellVarContext all
  CreateDirectory "$SMPROGRAMS\MultiChannelServer"
  CreateShortcut "$SMPROGRAMS\MultiChannelServer\Console.lnk" "$INSTDIR\mcconsole.exe"
  CreateShortcut "$SMPROGRAMS\MultiChannelServer\Server.lnk" "$INSTDIR\mcserver.exe"
  CreateShortcut "$SMPROGRAMS\MultiChannelServer\Documents.lnk" "$INSTDIR\docs"
  CreateShortcut "$SMPROGRAMS\MultiChannelServer\Uninstall.lnk" "$INSTDIR\uninstall.exe"
SectionEnd

Section /o "Search path" Path
  ReadRegDWORD $3 HKLM "${KEY}" "Path"
  ${If} $3 <> 1
    !insertmacro READ_PATH
    ${IfNot} ${Errors}
      StrCpy $0 "$0;$INSTDIR"
      !insertmacro WRITE_PATH
      WriteRegDWORD HKLM "${KEY}" "Path" 1
    ${EndIf}
  ${EndIf}
SectionEnd

Section /o "Service" Service
  ReadRegDWORD $3 HKLM "${KEY}" "Service"
  ${If} $3 <> 1
    nsExec::ExecToLog '"$INSTDIR\mcserver.exe" --install-service'
    Pop $0
    ${If} $0 = 0
      WriteRegDWORD HKLM "${KEY}" "Service" 1
      nsExec::ExecToLog 'sc.exe start mcserver'
      Pop $0
    ${EndIf}
  ${EndIf}
SectionEnd

Section -Resume
  ${If} $9 == "stopped"
    nsExec::ExecToLog 'sc.exe start mcserver'
    Pop $0
  ${EndIf}
SectionEnd

!insertmacro MUI_FUNCTION_DESCRIPTION_BEGIN
  !insertmacro MUI_DESCRIPTION_TEXT ${Programs} $(AboutPrograms)
  !insertmacro MUI_DESCRIPTION_TEXT ${Menu} $(AboutMenu)
  !insertmacro MUI_DESCRIPTION_TEXT ${Path} $(AboutPath)
  !insertmacro MUI_DESCRIPTION_TEXT ${Service} $(AboutService)
!insertmacro MUI_FUNCTION_DESCRIPTION_END

Function .onInit
  ${IfNot} ${RunningX64}
    MessageBox MB_ICONSTOP|MB_OK "$(Needs64)" /SD IDOK
    Abort
  ${EndIf}
  SetRegView 64
  ; Where it was before, unless said otherwise.
  ReadRegStr $0 HKLM "${KEY}" "Folder"
  ${If} $0 != ""
  ${AndIf} $INSTDIR == "$PROGRAMFILES64\MultiChannelServer"
    StrCpy $INSTDIR $0
  ${EndIf}
  ${GetParameters} $0
  ClearErrors
  ${GetOptions} $0 "/PATH" $1
  ${IfNot} ${Errors}
    !insertmacro SelectSection ${Path}
  ${EndIf}
  ClearErrors
  ${GetOptions} $0 "/SERVICE" $1
  ${IfNot} ${Errors}
    !insertmacro SelectSection ${Service}
  ${EndIf}
FunctionEnd

; What another version has installed goes, but for the service with its options and the search path. $9 tells whether the
; service was stopped for that.
Function GiveWay
  StrCpy $9 ""
  ReadRegStr $0 HKLM "${KEY}" "Folder"
  ${If} $0 != ""
  ${AndIf} ${FileExists} "$0\uninstall.exe"
    ; net waits until it has stopped, and fails where it did not run.
    nsExec::Exec 'net.exe stop mcserver'
    Pop $1
    ${If} $1 = 0
      StrCpy $9 "stopped"
    ${EndIf}
    ExecWait '"$0\uninstall.exe" /S /UPGRADE _?=$0'
  ${EndIf}
FunctionEnd

Function un.onInit
  SetRegView 64
FunctionEnd

; Only what was installed goes: what else lies in the folder, and all configuration, stays.
Section "Uninstall"
  SetShellVarContext all
  ${GetParameters} $0
  ClearErrors
  ${GetOptions} $0 "/UPGRADE" $8
  ${If} ${Errors}
    ReadRegDWORD $3 HKLM "${KEY}" "Service"
    ${If} $3 = 1
      nsExec::ExecToLog '"$INSTDIR\mcserver.exe" --remove-service'
      Pop $0
    ${EndIf}
    ReadRegDWORD $3 HKLM "${KEY}" "Path"
    ${If} $3 = 1
      !insertmacro READ_PATH
      ${IfNot} ${Errors}
        ${WordReplace} "$0" ";$INSTDIR" "" "+" $0
        !insertmacro WRITE_PATH
      ${EndIf}
    ${EndIf}
    DeleteRegKey HKLM "${KEY}"
  ${EndIf}
  Delete "$SMPROGRAMS\MultiChannelServer\Console.lnk"
  Delete "$SMPROGRAMS\MultiChannelServer\Server.lnk"
  Delete "$SMPROGRAMS\MultiChannelServer\Documents.lnk"
  Delete "$SMPROGRAMS\MultiChannelServer\Uninstall.lnk"
  RMDir "$SMPROGRAMS\MultiChannelServer"
  !include "${FILES}\uninstall.nsh"
  Delete "$INSTDIR\uninstall.exe"
  RMDir "$INSTDIR"
  DeleteRegKey HKLM "${LISTED}"
SectionEnd
