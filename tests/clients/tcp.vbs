' cTCP as a script meets it, without a message loop: what can be set and read, and that nothing raises.
Option Explicit

Dim tcp
Set tcp = CreateObject("VelaUtil10.cTCP")
On Error Resume Next
Main
If Err.Number <> 0 Then Fail Err.Number & " " & Err.Description
WScript.Echo "tcp.vbs: passed"

Sub Main()
    Dim port, host, other
    Check "at first", Described(), "0 0  0  False"
    tcp.FiltroDeMensagens = "orders:"
    port = "5001"
    host = "127.0.0.1"
    tcp.Inicializar port, 5002, host
    Check "initialised", Described(), "5001 5002 127.0.0.1 0 orders: False"
    Check "arguments", port & host, "5001127.0.0.1"
    tcp.Inicializar
    Check "emptied", Described(), "0 0  0 orders: False"

    Check "listens", tcp.IniciarEscuta(), True
    port = tcp.portaLocal
    Check "on a free port", port > 0 And tcp.StatusPorta = 2, True
    Set other = CreateObject("VelaUtil10.cTCP")
    other.Inicializar port
    Check "taken", other.IniciarEscuta() & other.StatusPorta, "True0"
    Check "connects", other.EnviarMsg("hello", 0), True
    Check "nowhere", other.StatusPorta, 0
    other.Inicializar 0, port, host
    Check "connects", other.EnviarMsg("hello"), True
    Check "connecting", other.StatusPorta, 6
    Check "sent", other.MsgEnviada, False
    tcp.Inicializar 70000, -1
    Check "out of range", tcp.StatusPorta, 0

    Set tcp.TcpCom = Nothing
    Check "a new one", Described(), "0 0  0 orders: False"
    NoControl other, 13
    NoControl 5, 438
End Sub

Function Described()
    Described = tcp.portaLocal & " " & tcp.portaRemota & " " & tcp.Servidor & " " & _
        tcp.StatusPorta & " " & tcp.FiltroDeMensagens & " " & tcp.MsgEnviada
End Function

Sub NoControl(what, number)
    Dim found
    On Error Resume Next
    If IsObject(what) Then Set tcp.TcpCom = what Else tcp.TcpCom = what
    found = Err.Number
    Err.Clear
    Check "no control", found, number
End Sub

Sub Check(what, given, wanted)
    If given <> wanted Then Fail what & ": '" & given & "', not '" & wanted & "'"
End Sub

' Ends the program: an error raised here would be lost where errors are passed over.
Sub Fail(why)
    WScript.Echo "tcp.vbs: " & why
    WScript.Quit 1
End Sub
