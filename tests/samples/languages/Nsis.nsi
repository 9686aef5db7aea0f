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
