@echo off
rem Installs or uninstalls the LUDAX tournament's configuration of one game on this PC, and
rem appends the run's log to <log folder>\<computer name>.log (a share that every PC can write,
rem say). An install also checks that every file stands as shipped. Ends with Ludax.exe's exit
rem status: 0 when the files are in place as shipped (an earlier install's included), or, for an
rem uninstall, when nothing of the configuration is left (also where it was never installed); see
rem Ludax.exe /? for the others.
rem
rem   ludax-deploy.cmd install^|uninstall cs16^|css <log folder> [<Ludax.exe>]
rem
rem Ludax.exe is the one beside this file unless named. It runs from a logon script, a scheduled
rem task or a remote shell alike; where neither the account's registry nor the machine's names
rem Steam's folder, add /steam "<folder>" to the command lines below.
setlocal
set "action=%~1"
set "game=%~2"
set "logs=%~3"
set "ludax=%~4"
if "%ludax%"=="" set "ludax=%~dp0Ludax.exe"
if "%game%"=="" goto usage
if "%logs%"=="" goto usage
if /i not "%action%"=="install" if /i not "%action%"=="uninstall" goto usage

rem The log is written here first, so that a share out of reach costs the log only.
set "runlog=%TEMP%\ludax-deploy-%RANDOM%.log"
if /i "%action%"=="uninstall" goto uninstall
"%ludax%" /install %game% /log "%runlog%"
set status=%errorlevel%
if not "%status%"=="0" goto report
"%ludax%" /verify %game% /log "%runlog%"
set status=%errorlevel%
goto report
:uninstall
"%ludax%" /uninstall %game% /log "%runlog%"
set status=%errorlevel%

:report
rem A failed >> sets no errorlevel under Wine's cmd: whether the share's log grew tells.
set "shared=%logs%\%COMPUTERNAME%.log"
set before=0
if exist "%shared%" for %%F in ("%shared%") do set before=%%~zF
call :append 2>nul
set after=0
if exist "%shared%" for %%F in ("%shared%") do set after=%%~zF
rem (The name ends in ".log": no digit stands before the redirection, and no space is added.)
if %after% LEQ %before% echo ludax-deploy: could not add the log to %shared%>&2
del "%runlog%" 2>nul
echo ludax-deploy: %action% %game% on %COMPUTERNAME% ended with status %status%
exit /b %status%

:append
rem On its own, so that the redirection that fails is undone with the call (Wine's cmd keeps a
rem failed one's other redirections for the rest of the script).
type "%runlog%" >> "%shared%"
exit /b

:usage
echo usage: ludax-deploy.cmd install^|uninstall cs16^|css ^<log folder^> [^<Ludax.exe^>]>&2
exit /b 1
