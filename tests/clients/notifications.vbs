' Subscribers and events made in a script: the handshake, variables that the hub changes, and the
' register of events.
Option Explicit

Dim system, hub, log
Set system = CreateObject("VelaUtil10.MyUtil").MySys
Set hub = system.Notifications
On Error Resume Next
Main
If Err.Number <> 0 Then Check "error", Err.Number & " " & Err.Description, ""
WScript.Echo "notifications.vbs: passed"

Sub Main()
    Handshake
    Check "interval", system.Pulsar.CreatePulsar().PulseInterval, 60000
    History
End Sub

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

Function NewFollower(name)
    Set NewFollower = New Follower
    NewFollower.Name = name
End Function

Sub Handshake()
    Dim one, two, published, other, mine
    Set one = NewFollower("one ")
    Set two = NewFollower("two ")
    hub.Welcome one
    Set published = hub.Publish("my:first")
    hub.Welcome two
    Check "agreed", published.Notify("go "), True
    Check "stopped", hub.ItemByTAG(" My:First ").Notify("stop"), False
    Check "log", log, "one go two go one stoptwo stop"
    Check "targeted", published.Notify("stop", two), True
    For Each other In published.Subscribers
        Check "the same object", (other Is one) Or (other Is two), True
    Next
    hub.Goodbye one
    Check "the other", published.Subscribers.Item(1) Is two, True
    log = ""
    published.Notify
    Check "without a parameter", log, "(none)two "
    hub.Goodbye two
    Check "none left", published.Subscribers.Count, 0
    Set mine = CreateObject("VelaUtil10.Notification")
    hub.Publish "my:first", mine
    Check "the one held", mine Is published, True
    hub.Remove "my:first"
End Sub

Class Failing
    Public EventKey

    Property Get EventType()
        Err.Raise 1234
    End Property
End Class

Class Happening
    Public EventType
    Public EventSource
    Public EventKey
End Class

Sub History()
    Dim register, key, found, keys
    Set register = system.EventHistory
    For Each key In Array("a", "b", "A", "c")
        Set found = New Happening
        found.EventKey = key
        found.EventType = 7
        found.EventSource = Asc(key)
        register.Add found
    Next
    For Each found In register.FindItems(7)
        keys = keys & found.EventKey
    Next
    Check "all of a type", keys, "abc"
    Check "of a source", register.FindItems(7, Asc("b"))("B").EventKey, "b"
    Check "none", register.FindItems(8).Count, 0
    register.Add New Failing
    register.Add Nothing
    register.Add hub
    Check "one that fails when asked", register.FindItems(7).Count & register.Count, "34"
    Set found = New Happening
    found.EventKey = "B"
    Check "by a probe", register.FindItem(found).EventSource, Asc("b")
    register.Remove found
    Check "removed by it", register.FindItem(found) Is Nothing, True
    register.Add found
    found.EventKey = "changed"
    register.Remove found
    Check "kept under the old key", register.Count, 4
    register.RemoveAll
    register.Add found
    Check "usable again", register.Count, 1
End Sub

Sub Check(what, found, wanted)
    If found = wanted Then Exit Sub
    WScript.Echo "notifications.vbs: " & what & ": " & found & " instead of " & wanted
    WScript.Quit 1
End Sub
