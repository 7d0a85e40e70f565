@echo off
rem Tries the library on this Windows. README.txt, beside this file, says what that takes and touches.
setlocal
pushd "%~dp0"
set "java=java.exe"
if not defined JAVA_HOME goto go
set "java=%JAVA_HOME:"=%\bin\java.exe"
if exist "%java%" goto go
echo JAVA_HOME leads to no Java: "%java%"
popd
exit /b 2
:go
for /f "tokens=2 delims=:." %%p in ('chcp') do set "page=%%p"
rem The system's tools print in the console's code page: what the demonstration has made has letters of many.
chcp 65001 >nul
"%java%" -XX:-UsePerfData -cp lib\corvane-check.jar com.corvane.check.Start %*
set "result=%errorlevel%"
chcp %page% >nul
if %result% == 9009 echo No Java found: set JAVA_HOME to the folder of a JDK or JRE 17 or later.
if %result% == 9009 set "result=2"
popd
exit /b %result%
