; Instalador para el usuario actual, sin permisos de administrador. En silencio con /S; otra carpeta, con /D=RUTA.
Unicode true
Target amd64-unicode
SetCompressor /SOLID lzma
!include MUI2.nsh
!include LogicLib.nsh

!define PROGRAMA "UnirQ19"
!define DESINSTALAR "Software\Microsoft\Windows\CurrentVersion\Uninstall\${PROGRAMA}"
!define CLASES "Software\Classes"
!define TIPO "${PROGRAMA}.Remesa"
!define AJUSTES "$INSTDIR\Tarvo.INI"

Name "${PROGRAMA}"
OutFile "${SALIDA}"
RequestExecutionLevel user
InstallDir "$LOCALAPPDATA\Programs\${PROGRAMA}"
InstallDirRegKey HKCU "${DESINSTALAR}" "InstallLocation"
ManifestDPIAware true
BrandingText "${PROGRAMA} ${VERSION}"

!define MUI_ICON "${ICONO}"
!define MUI_UNICON "${ICONO}"
!define MUI_ABORTWARNING
!define MUI_FINISHPAGE_RUN "$INSTDIR\${PROGRAMA}.exe"
!insertmacro MUI_PAGE_WELCOME
!insertmacro MUI_PAGE_DIRECTORY
!insertmacro MUI_PAGE_INSTFILES
!insertmacro MUI_PAGE_FINISH
!insertmacro MUI_UNPAGE_CONFIRM
!insertmacro MUI_UNPAGE_INSTFILES
!insertmacro MUI_LANGUAGE "Spanish"

VIProductVersion "${VERSION}.0"
VIAddVersionKey /LANG=${LANG_SPANISH} "ProductName" "${PROGRAMA}"
VIAddVersionKey /LANG=${LANG_SPANISH} "ProductVersion" "${VERSION}"
VIAddVersionKey /LANG=${LANG_SPANISH} "FileVersion" "${VERSION}"
VIAddVersionKey /LANG=${LANG_SPANISH} "FileDescription" "Instalador de ${PROGRAMA}"
VIAddVersionKey /LANG=${LANG_SPANISH} "LegalCopyright" "GPL, versión 3 o posterior"

; Un programa abierto no se deja sustituir: se pide que se cierre. En silencio se acaba con el código 2.
!macro EsperarCierre
  ${Do}
    ClearErrors
    ${If} ${FileExists} "$INSTDIR\${PROGRAMA}.exe"
      FileOpen $0 "$INSTDIR\${PROGRAMA}.exe" a
      FileClose $0
    ${EndIf}
    ${IfNot} ${Errors}
      ${ExitDo}
    ${EndIf}
    MessageBox MB_RETRYCANCEL|MB_ICONEXCLAMATION "UnirQ19 está abierto. Ciérrelo y pulse Reintentar." /SD IDCANCEL IDRETRY +3
    SetErrorLevel 2
    Quit
  ${Loop}
!macroend

; Avisa al Explorador de que las asociaciones han cambiado.
!macro AvisarAsociaciones
  System::Call "shell32::SHChangeNotify(i 0x08000000, i 0, p 0, p 0)"
!macroend

Section
  !insertmacro EsperarCierre
  !include "${OBRA}/instalar.nsh"

  ; Los ajustes del operador no se cambian. La fecha del original dice al desinstalar si los cambió.
  SetOutPath "$INSTDIR"
  ${IfNot} ${FileExists} "${AJUSTES}"
    File "${CARPETA}/Tarvo.INI"
    GetFileTime "${AJUSTES}" $0 $1
    WriteRegStr HKCU "${DESINSTALAR}" "Ajustes" "$0:$1"
  ${EndIf}

  CreateShortcut "$SMPROGRAMS\${PROGRAMA}.lnk" "$INSTDIR\${PROGRAMA}.exe"

  ; "Abrir con": se ofrece, sin quitar los ficheros .Q19 a otro programa.
  WriteRegStr HKCU "${CLASES}\${TIPO}" "" "Remesa del Cuaderno 19"
  WriteRegStr HKCU "${CLASES}\${TIPO}\DefaultIcon" "" "$INSTDIR\${PROGRAMA}.exe,0"
  WriteRegStr HKCU "${CLASES}\${TIPO}\shell\open\command" "" '"$INSTDIR\${PROGRAMA}.exe" "%1"'
  WriteRegStr HKCU "${CLASES}\.Q19\OpenWithProgids" "${TIPO}" ""
  WriteRegStr HKCU "${CLASES}\Applications\${PROGRAMA}.exe" "FriendlyAppName" "${PROGRAMA}"
  WriteRegStr HKCU "${CLASES}\Applications\${PROGRAMA}.exe\shell\open\command" "" '"$INSTDIR\${PROGRAMA}.exe" "%1"'
  WriteRegStr HKCU "${CLASES}\Applications\${PROGRAMA}.exe\SupportedTypes" ".Q19" ""
  WriteRegStr HKCU "${CLASES}\Applications\${PROGRAMA}.exe\SupportedTypes" ".xml" ""

  WriteUninstaller "$INSTDIR\desinstalar.exe"
  WriteRegStr HKCU "${DESINSTALAR}" "DisplayName" "${PROGRAMA}"
  WriteRegStr HKCU "${DESINSTALAR}" "DisplayVersion" "${VERSION}"
  WriteRegStr HKCU "${DESINSTALAR}" "DisplayIcon" "$INSTDIR\${PROGRAMA}.exe,0"
  WriteRegStr HKCU "${DESINSTALAR}" "InstallLocation" "$INSTDIR"
  WriteRegStr HKCU "${DESINSTALAR}" "UninstallString" '"$INSTDIR\desinstalar.exe"'
  WriteRegStr HKCU "${DESINSTALAR}" "QuietUninstallString" '"$INSTDIR\desinstalar.exe" /S'
  WriteRegDWORD HKCU "${DESINSTALAR}" "NoModify" 1
  WriteRegDWORD HKCU "${DESINSTALAR}" "NoRepair" 1
  SectionGetSize 0 $0
  WriteRegDWORD HKCU "${DESINSTALAR}" "EstimatedSize" $0
  !insertmacro AvisarAsociaciones
SectionEnd

Section "Uninstall"
  !insertmacro EsperarCierre
  ReadRegStr $2 HKCU "${DESINSTALAR}" "Ajustes"
  ClearErrors
  GetFileTime "${AJUSTES}" $0 $1
  ${IfNot} ${Errors}
  ${AndIf} $2 == "$0:$1"
    Delete "${AJUSTES}"
  ${EndIf}
  !include "${OBRA}/quitar.nsh"
  Delete "$INSTDIR\desinstalar.exe"
  SetOutPath "$TEMP"
  RMDir "$INSTDIR"

  Delete "$SMPROGRAMS\${PROGRAMA}.lnk"
  DeleteRegValue HKCU "${CLASES}\.Q19\OpenWithProgids" "${TIPO}"
  DeleteRegKey /ifempty HKCU "${CLASES}\.Q19\OpenWithProgids"
  DeleteRegKey /ifempty HKCU "${CLASES}\.Q19"
  DeleteRegKey HKCU "${CLASES}\${TIPO}"
  DeleteRegKey HKCU "${CLASES}\Applications\${PROGRAMA}.exe"
  DeleteRegKey HKCU "${DESINSTALAR}"
  !insertmacro AvisarAsociaciones
SectionEnd
