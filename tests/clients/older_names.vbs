' The older names in gUtil give what the members that they stand for give.
Option Explicit

Dim old, util, files, folder
Set old = CreateObject("VelaUtil10.gUtil")
Set util = CreateObject("VelaUtil10.MyUtil")
Set files = CreateObject("Scripting.FileSystemObject")
folder = files.GetSpecialFolder(2).Path
On Error Resume Next
Main
If Err.Number <> 0 Then Fail Err.Number & " " & Err.Description
WScript.Echo "older_names.vbs: passed"

Sub Main()
    Numbers
    Dates
    Texts
    Collections
    FilesAndSystem
End Sub

Sub Numbers()
    Check "gMD5", old.gMD5("abc"), util.MyMath.CriarMD5("abc")
    Check "gParteDecimal", old.gParteDecimal(12.345, 2), 35
    Check "g2expX", old.g2expX(24), 16777216
    Check "gBitTrue", old.gBitTrue(5, 3), True
    Check "gMax and gMin", old.gMax(2, 10) & old.gMin(2, 10), "102"
End Sub

Sub Dates()
    Check "gDataEntre", old.gDataEntre("02-01-2004", "01-01-2004", "02-01-2004"), True
    Check "gDiaDaSemana", old.gDiaDaSemana(2004, 2, 29), 1
    Check "gDiasDoMes", old.gDiasDoMes(2100, 2), 29
    Check "gStandardStrData", old.gStandardStrData("x"), "x"
    Check "gHora", old.gHora("9:05"), 905
End Sub

Sub Texts()
    Dim copy, value
    value = "12,5 EUR"
    Check "gStrCharValidos", old.gStrCharValidos(value, "0123456789,"), "12,5"
    old.gCopyStr value, copy
    Check "gCopyStr", copy, value
End Sub

Sub Collections()
    Dim towns
    Set towns = CreateObject("VelaUtil10.Collection")
    towns.Add "Lisboa", "capital"
    Check "gExisteNaCollection", old.gExisteNaCollection(towns, "CAPITAL"), True
    old.gDestroiCollection towns, True
    Check "gDestroiCollection", towns Is Nothing, True
End Sub

Sub FilesAndSystem()
    Dim path, server, myFolder, myDrive, myFile
    path = files.BuildPath(folder, files.GetTempName())
    Check "gEscreverFicheiro", old.gEscreverFicheiro(path, "linha"), True
    Check "gLerFicheiro", old.gLerFicheiro(path), "linha"
    old.gGetPathInfo path, myFolder, myDrive, myFile
    Check "gGetPathInfo", myFile.Size, 5
    Check "gInfoDaPasta", old.gInfoDaPasta(folder).Path, myFolder.Path
    Check "gInfDeDrive", old.gInfDeDrive(Left(folder, 1)).DriveLetter, myDrive.DriveLetter
    Check "gDrivesNoSistema", old.gDrivesNoSistema().Count > 0, True
    Check "gTransformarEmUNC", old.gTransformarEmUNC(path, server) & server, path
    files.DeleteFile path
    Check "gCurrentMachineName", old.gCurrentMachineName(), util.MySys.CurrentMachineName
    Check "gLerValorLocalMachine", old.gLerValorLocalMachine("Software\None", "none"), ""
End Sub

Sub Check(what, given, wanted)
    If given <> wanted Then Fail what & ": '" & given & "', not '" & wanted & "'"
End Sub

' Ends the program: an error raised here would be lost where errors are passed over.
Sub Fail(why)
    WScript.Echo "older_names.vbs: " & why
    WScript.Quit 1
End Sub
