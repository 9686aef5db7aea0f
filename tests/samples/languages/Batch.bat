@echo off
REM Makes a copy of every text file.
setlocal enabledelayedexpansion
:: The target is the first argument.
set target=%1
if not exist "%target%" mkdir "%target%"
for %%f in (*.txt) do (
    copy "%%f" "%target%" >nul
    if errorlevel 1 goto failed
)
exit /b 0

:failed
echo Failed: "%target%"
exit /b 1
net use z: & icacls a & fc a b >con & for /f usebackq %%i in (a) do reg query %%i
