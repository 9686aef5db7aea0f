; The installer: for the user who runs it, without administrator rights. /S installs without a question, /D=FOLDER (as the
; last option, without quotes) elsewhere; the uninstaller takes /S, too. Made by scripts/package, which gives VERSION,
; FILES (the folder with what is installed), COLOURS (which deletes its colour sets), ICON and OUT.

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

!include LogicLib.nsh

; Puts into $1 when the settings beside the program were written last, and nothing when there are none. Only as long as
; that is the time at which they were installed are they not the user's own.
!macro TimeOfSettings
    ClearErrors
    GetFileTime "$INSTDIR\orvane.ini" $0 $1
    ${If} ${Errors}
        StrCpy $1 ""
    ${Else}
        StrCpy $1 "$0 $1"
    ${EndIf}
!macroend

; Ends here, with exit code 2 and before anything is changed, while the program runs: its file cannot be written then.
!macro RequireClosed
retry:
    ClearErrors
    ${If} ${FileExists} "$INSTDIR\orvane.exe"
        FileOpen $0 "$INSTDIR\orvane.exe" a
        FileClose $0
    ${EndIf}
    ${If} ${Errors}
        MessageBox MB_RETRYCANCEL|MB_ICONEXCLAMATION \
            "Orvane is running, or $INSTDIR\orvane.exe is write-protected. Close Orvane and try again." \
            /SD IDCANCEL IDRETRY retry
        Abort
    ${EndIf}
!macroend

Section "-Orvane" ORVANE
    SetRegView 64
    !insertmacro RequireClosed
    SetOutPath "$INSTDIR\colours"
    File "${FILES}\colours\*.txt"
    SetOutPath "$INSTDIR"
    File "${FILES}\orvane.exe"
    File "${FILES}\orvane.html"
    File "${FILES}\CHANGES.txt"
    File "${FILES}\LICENSE.txt"
    File "${FILES}\orvane.ini.original"

    ; Settings of the user's own stay; those of an earlier version are replaced.
    !insertmacro TimeOfSettings
    ReadRegStr $2 HKCU "${UNINSTALL}" "SettingsTime"
    ${If} $1 == ""
    ${OrIf} $1 == $2
        File "${FILES}\orvane.ini"
        !insertmacro TimeOfSettings
        WriteRegStr HKCU "${UNINSTALL}" "SettingsTime" $1
    ${EndIf}

    ; The program starts in the output folder.
    SetOutPath "$DOCUMENTS"
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
    SectionGetSize ${ORVANE} $0 ; kilobytes, as the entry wants them
    WriteRegDWORD HKCU "${UNINSTALL}" "EstimatedSize" $0
    WriteRegDWORD HKCU "${UNINSTALL}" "NoModify" 1
    WriteRegDWORD HKCU "${UNINSTALL}" "NoRepair" 1
SectionEnd

Section Uninstall
    SetRegView 64
    !insertmacro RequireClosed
    ; What the user has put into the folder, and settings of the user's own, stay.
    !insertmacro TimeOfSettings
    ReadRegStr $2 HKCU "${UNINSTALL}" "SettingsTime"
    ${If} $1 == $2
        Delete "$INSTDIR\orvane.ini"
    ${EndIf}
    Delete "$INSTDIR\orvane.ini.original"
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
