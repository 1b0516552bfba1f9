' Subscribers made in a script: the handshake, and variables that the hub changes.
Option Explicit

Dim hub, log
Set hub = CreateObject("VelaUtil10.MyUtil").MySys.Notifications
On Error Resume Next
Handshake
Check "error", Err.Number & Err.Description, "0"
WScript.Echo "notifications.vbs: passed"

Class Follower
    Public Name

    Sub Notify(sender, E)
        If E.NotificationID = 1 Then
            If Left(E.Parameter.Tag, 3) = "MY:" Then E.Parameter.Subscribers.Add Me
        ElseIf E.NotificationID = 2 Then
            E.Parameter.Subscribers.Remove Me
        Else
            If IsEmpty(E.Parameter) Then log = log & "(none)"
            log = log & Name & E.Parameter
            If E.Parameter = "stop" Then E.Cancel = True
        End If
    End Sub
End Class

Sub Handshake()
    Dim one, two, published, other, mine
    Set one = New Follower
    one.Name = "one "
    Set two = New Follower
    two.Name = "two "
    hub.Welcome one
    Set published = hub.Publish("my:first")
    hub.Welcome two
    Check "agreed", published.Notify("go "), True
    Check "stopped", published.Notify("stop"), False
    Check "targeted", published.Notify("stop", two), True
    For Each other In published.Subscribers
        Check "the same object", (other Is one) Or (other Is two), True
    Next
    hub.Goodbye one
    published.Notify
    Check "log", log, "one go two go one stoptwo stoptwo stop(none)two "
    hub.Goodbye two
    Check "none left", published.Subscribers.Count, 0
    Set mine = CreateObject("VelaUtil10.Notification")
    hub.Publish "my:first", mine
    Check "the one held", mine Is published, True
    hub.Remove "my:first"
End Sub

Sub Check(what, found, wanted)
    If found = wanted Then Exit Sub
    WScript.Echo "notifications.vbs: " & what & ": " & found & " instead of " & wanted
    WScript.Quit 1
End Sub
