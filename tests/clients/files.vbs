' What a script does with files, paths, folders and drives.
Option Explicit

On Error Resume Next
Main
If Err.Number <> 0 Then Fail Err.Number & " " & Err.Description
WScript.Echo "files.vbs: passed"

Sub Main()
    Dim util, folders, system, folder
    Set util = CreateObject("VelaUtil10.MyUtil").MyFile
    Set folders = CreateObject("VelaUtil10.SysUtil").Directories
    Set system = CreateObject("Scripting.FileSystemObject")
    folder = folders.TempDirectory & "\vela-client"
    If system.FolderExists(folder) Then system.DeleteFolder folder
    system.CreateFolder folder
    WholeFiles util, folder & "\"
    Searches util, folder & "\"
    Paths util
    Objects util, system, folder
    SystemFolders folders, system
    system.DeleteFolder folder
End Sub

Sub WholeFiles(util, folder)
    Dim note, hidden, name, temporary
    note = "a" & Chr(231) & Chr(227) & "o" & vbCrLf & Chr(0)
    name = folder & "note.txt"
    hidden = folder & "hidden"
    Check "written", util.EscreverFicheiro(name, note), True
    Check "read", util.LerFicheiro(name), note
    Check "there", util.ExisteFich(name), -1
    Check "writable", util.TestarPermissaoEscrita(name), True
    Check "a file", util.ProbablyIsFile(name), True
    Check "enciphered", util.EncriptarParaFicheiro(note, hidden, "sesame"), True
    Check "deciphered", util.DesencriptarDeFicheiro(hidden, "SESAME"), note
    Check "file to file", util.EncriptarFicheiroParaFicheiro(name, hidden), True
    Check "and back", util.DesencriptarFicheiroParaFicheiro(hidden, name), True
    Check "read again", util.LerFicheiro(name), note
    Check "deleted", util.ApagaFicheiro(hidden), -1
    Check "gone", util.ApagaFicheiro(hidden), 0
    temporary = util.NomeFichTemporario
    Check "temporary", util.ExisteFich(temporary), -1
    util.ApagaFicheiro temporary
End Sub

Sub Searches(util, folder)
    Dim names, later()
    Check "counted", util.QuantosFich(folder & "*.t?t"), 1
    Check "named", util.QuantosFicheiros(folder & "*", names), 1
    Check "the name", names(0), "note.txt"
    Check "none", util.QuantosFicheiros(folder & "*.none", later), 0
    Check "no names", UBound(later), -1
End Sub

Sub Paths(util)
    Dim folder, name, extension
    util.SeparaPercursoNomeExt "C:\Data\ana.txt", folder, name, extension
    Check "parts", folder & " " & name & " " & extension, "C:\Data\ ana txt"
    util.SeparaPercursoNome "C:\Data\ana.txt", folder, name
    Check "two parts", folder & " " & name, "C:\Data\ ana.txt"
    Check "folder", util.QualPercurso("C:\Data\ana.txt"), "C:\Data\"
    Check "name", util.QualFicheiro("C:\Data\ana.txt"), "ana.txt"
    Check "extension", util.QualExt("C:\Data\ana.txt"), "txt"
End Sub

Sub Objects(util, system, path)
    Dim folder, drive, file, server, drives
    util.InfoDeFicheiro path & "\note.txt", folder, drive, file
    Check "folder object", folder.Path, path
    Check "file object", file.Name & file.Size, "note.txt7"
    Check "drive object", UCase(drive.DriveLetter), "C"
    Check "folder by path", util.InfoDaPasta(path).Files.Count, 1
    Check "no folder", util.InfoDaPasta(path & "\none") Is Nothing, True
    Check "drive", util.InfoDeDrive("c").DriveLetter, "C"
    Check "no drive", util.InfoDeDrive("Q:\") Is Nothing, True
    Set drives = util.DrivesNoSistema
    Check "drives", drives("c").DriveLetter, "C"
    Check "serial number", Len(util.SerialNumberEx(path)), 8
    Check "local", util.TransformarEmUNC(path, server), path
    Check "no server", server, ""
    ' On a machine with a screen this would wait for somebody.
    Check "asked a control", util.QueFicheiro("Which?", True, "a.txt", New Control), "C:\b.txt"
    Check "not built", UnRarError(util), &H80004001
End Sub

Function UnRarError(util)
    On Error Resume Next
    util.UnRAR "none.rar"
    UnRarError = Err.Number
    Err.Clear
End Function

Sub SystemFolders(folders, system)
    Dim path
    For Each path In Array(folders.SystemDirectory, folders.UserDirectory, _
            folders.AllUserAppDataDirectory, folders.ProgramFilesCommonDirectory, _
            folders.ProgramFilesDirectory, folders.TempDirectory)
        Check path, system.FolderExists(path), True
    Next
End Sub

' What a common dialog control looks like to its callers.
Class Control
    Public DialogTitle
    Public FileName
    Public Filter
    Public Flags
    Public CancelError
    Sub ShowOpen()
        If DialogTitle = "Which?" And FileName = "a.txt" Then FileName = "C:\b.txt"
    End Sub
End Class

Sub Check(what, given, wanted)
    If given <> wanted Then Fail what & ": '" & given & "', not '" & wanted & "'"
End Sub

' Ends the program: an error raised here would be lost where errors are passed over.
Sub Fail(why)
    WScript.Echo "files.vbs: " & why
    WScript.Quit 1
End Sub
