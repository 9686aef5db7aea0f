; The installer: for the user who runs it, without administrator rights. /S installs without a question, /D=FOLDER (as the
; last option, without quotes) elsewhere; the uninstaller takes /S, too. Made by scripts/package, which gives VERSION,
; FILES (the folder with what is installed), SETTINGS_SIZE (the size of its orvane.ini) and OUT.

Target amd64-unicode
SetCompressor /SOLID lzma
Name "Orvane"
OutFile "${OUT}"
RequestExecutionLevel user
ManifestDPIAware true
InstallDir "$LOCALAPPDATA\Programs\Orvane"
InstallDirRegKey HKCU "Software\Microsoft\Windows\CurrentVersion\Uninstall\Orvane" "InstallLocation"
Icon "${ICON}"
UninstallIcon "${ICON}"
ShowInstDetails nevershow
ShowUninstDetails nevershow

VIProductVersion "${VERSION}.0"
VIAddVersionKey "ProductName" "Orvane"
VIAddVersionKey "FileDescription" "Orvane text editor, installer"
VIAddVersionKey "FileVersion" "${VERSION}"
VIAddVersionKey "ProductVersion" "${VERSION}"
VIAddVersionKey "LegalCopyright" "MIT License"

Page directory
Page instfiles
UninstPage uninstConfirm
UninstPage instfiles

!define UNINSTALL "Software\Microsoft\Windows\CurrentVersion\Uninstall\Orvane"
!define APPLICATION "Software\Classes\Applications\orvane.exe"

; Puts the size of the settings beside the program into $1, 0 when there are none. A save of the dialogs changes it, since
; it drops the comments.
!macro SizeOfSettings
    StrCpy $1 0
    ClearErrors
    FileOpen $0 "$INSTDIR\orvane.ini" r
    ${IfNot} ${Errors}
        FileSeek $0 0 END $1
        FileClose $0
    ${EndIf}
!macroend

!include LogicLib.nsh

Section
    SetRegView 64
    SetOutPath "$INSTDIR\colours"
    File "${FILES}\colours\*.txt"
    SetOutPath "$INSTDIR"
    File "${FILES}\orvane.exe"
    File "${FILES}\orvane.html"
    File "${FILES}\CHANGES.txt"
    File "${FILES}\LICENSE.txt"

    ; Settings that the user has saved beside the program stay; those of an earlier version are replaced.
    !insertmacro SizeOfSettings
    ReadRegDWORD $2 HKCU "${UNINSTALL}" "SettingsSize"
    ${If} $1 = 0
    ${OrIf} $1 = $2
        File "${FILES}\orvane.ini"
        WriteRegDWORD HKCU "${UNINSTALL}" "SettingsSize" ${SETTINGS_SIZE}
    ${EndIf}

    CreateShortcut "$SMPROGRAMS\Orvane.lnk" "$INSTDIR\orvane.exe"
    WriteRegStr HKCU "Software\Microsoft\Windows\CurrentVersion\App Paths\orvane.exe" "" "$INSTDIR\orvane.exe"
    WriteRegStr HKCU "${APPLICATION}" "FriendlyAppName" "Orvane"
    WriteRegStr HKCU "${APPLICATION}\shell\open\command" "" '"$INSTDIR\orvane.exe" "%1"'
    WriteRegStr HKCU "Software\Classes\*\OpenWithList\orvane.exe" "" ""

    WriteUninstaller "$INSTDIR\uninstall.exe"
    WriteRegStr HKCU "${UNINSTALL}" "DisplayName" "Orvane"
    WriteRegStr HKCU "${UNINSTALL}" "DisplayVersion" "${VERSION}"
    WriteRegStr HKCU "${UNINSTALL}" "Publisher" "Orvane"
    WriteRegStr HKCU "${UNINSTALL}" "DisplayIcon" "$INSTDIR\orvane.exe"
    WriteRegStr HKCU "${UNINSTALL}" "InstallLocation" "$INSTDIR"
    WriteRegStr HKCU "${UNINSTALL}" "UninstallString" '"$INSTDIR\uninstall.exe"'
    WriteRegStr HKCU "${UNINSTALL}" "QuietUninstallString" '"$INSTDIR\uninstall.exe" /S'
    WriteRegDWORD HKCU "${UNINSTALL}" "NoModify" 1
    WriteRegDWORD HKCU "${UNINSTALL}" "NoRepair" 1
SectionEnd

Section Uninstall
    SetRegView 64
    ; What the user has put into the folder, and settings that were saved, stay.
    !insertmacro SizeOfSettings
    ReadRegDWORD $2 HKCU "${UNINSTALL}" "SettingsSize"
    ${If} $1 = $2
        Delete "$INSTDIR\orvane.ini"
    ${EndIf}
    Delete "$INSTDIR\orvane.exe"
    Delete "$INSTDIR\orvane.html"
    Delete "$INSTDIR\CHANGES.txt"
    Delete "$INSTDIR\LICENSE.txt"
    !include "${COLOURS}"
    RMDir "$INSTDIR\colours"
    Delete "$INSTDIR\uninstall.exe"
    RMDir "$INSTDIR"

    Delete "$SMPROGRAMS\Orvane.lnk"
    DeleteRegKey HKCU "Software\Microsoft\Windows\CurrentVersion\App Paths\orvane.exe"
    DeleteRegKey HKCU "${APPLICATION}"
    DeleteRegKey HKCU "Software\Classes\*\OpenWithList\orvane.exe"
    DeleteRegKey HKCU "${UNINSTALL}"
SectionEnd
