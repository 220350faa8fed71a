@echo off
rem Installs the LUDAX tournament's configuration of one game on this PC, checks that every file
rem stands as shipped, and appends this run's log to <log folder>\<computer name>.log (a share
rem that every PC can write, say). Ends with Ludax.exe's exit status: 0 when the files are in
rem place as shipped, an earlier install's included; see Ludax.exe /? for the others.
rem
rem   ludax-deploy.cmd cs16^|css <log folder> [<Ludax.exe>]
rem
rem Ludax.exe is the one beside this file unless named. It runs from a logon script, a scheduled
rem task or a remote shell alike; where neither the account's registry nor the machine's names
rem Steam's folder, add /steam "<folder>" to the two command lines below.
setlocal
set "game=%~1"
set "logs=%~2"
set "ludax=%~3"
if "%ludax%"=="" set "ludax=%~dp0Ludax.exe"
if "%game%"=="" goto usage
if "%logs%"=="" goto usage

rem The log is written here first, so that a share out of reach costs the log only.
set "runlog=%TEMP%\ludax-deploy-%RANDOM%.log"
"%ludax%" /install %game% /log "%runlog%"
set status=%errorlevel%
if not "%status%"=="0" goto report
"%ludax%" /verify %game% /log "%runlog%"
set status=%errorlevel%
:report
type "%runlog%" >> "%logs%\%COMPUTERNAME%.log"
if errorlevel 1 echo ludax-deploy: could not add the log to %logs%\%COMPUTERNAME%.log 1>&2
del "%runlog%" 2>nul
echo ludax-deploy: %game% on %COMPUTERNAME% ended with status %status%
exit /b %status%

:usage
echo usage: ludax-deploy.cmd cs16^|css ^<log folder^> [^<Ludax.exe^>] 1>&2
exit /b 1
