; Installs the program.
# For one user.
!include "MUI2.nsh"
!define VERSION 1.5
Name "Demo ${VERSION}"
OutFile 'demo.exe'
InstallDir "$PROGRAMFILES"

/* The files
   themselves. */
Section "Main"
    SetOutPath $INSTDIR
    File demo.exe
    ${If} $0 > 10
        MessageBox MB_OK "it's done"
    ${EndIf}
SectionEnd
!finalize "sign %1"
manifestdpiaware true
Target amd64-unicode
Function .onInit
    SetRegView 64
    InitPluginsDir
    CreateShortCut "$SMPROGRAMS\Demo.lnk" $INSTDIR\demo.exe
    createshortcut $LOCALAPPDATA\a.lnk $R1
    ${Unless} $1 = 0
        ReadRegDWORD $2 HKCU "Software\Demo" "Count" ; a number
    ${ElseIf} $3 != 1
        Sleep 100
    ${EndIf}
FunctionEnd
