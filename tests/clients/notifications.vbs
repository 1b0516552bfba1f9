' Subscribers and events made in a script: the handshake, errors on their way through the hub, and
' variables that it changes.
Option Explicit

Dim system, hub, log
Set system = CreateObject("VelaUtil10.MyUtil").MySys
Set hub = system.Notifications
On Error Resume Next
Main
If Err.Number <> 0 Then Fail Err.Number & " " & Err.Description
WScript.Echo "notifications.vbs: passed"

Sub Main()
    Handshake
    Errors
    ReplacedVariable
    Pulsars
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
            If E.Parameter = "fail" Then Err.Raise 1234, "follower", "no way"
        End If
    End Sub
End Class

Function NewFollower(name)
    Set NewFollower = New Follower
    NewFollower.Name = name
End Function

Sub Handshake()
    Dim one, two, published, other
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
    Check "one left", published.Subscribers.Count, 1
    Check "the other", published.Subscribers.Item(1) Is two, True
    log = ""
    published.Notify
    Check "without a parameter", log, "(none)two "
    hub.Goodbye two
    hub.Remove published.Id
    Check "still there", hub.Count, 7
    hub.Remove "my:first"
    Check "gone", hub.Count, 6
End Sub

Sub Errors()
    Dim published, follower
    Set follower = NewFollower("")
    Set published = hub.Publish("my:errors")
    published.Subscribers.Add follower
    On Error Resume Next
    hub.Publish "sys:on_pulse"
    Check "number", Err.Number, -1
    Check "source", Err.Source, "Notifications"
    Check "text", Err.Description, "User defined notifications must have a Tag property " & _
        "started with 'MY:' (Ex: MY:NOTIFICATION_01)."
    Err.Clear
    published.Notify "fail"
    ' Not every script engine tells others the source and text of its objects' errors.
    Check "a subscriber's error", Err.Number, 1234
    Err.Clear
    hub.Welcome system
    Check "no subscriber", Err.Number, 13
    Err.Clear
    hub.Welcome Nothing
    Check "nothing", Err.Number, 5
    Err.Clear
    On Error GoTo 0
    hub.Remove "my:errors"
End Sub

Sub ReplacedVariable()
    Dim held, mine, unset
    Set held = hub.Publish("my:held", unset)
    Check "in an empty variable", unset Is held, True
    Set mine = CreateObject("VelaUtil10.Notification")
    Check "the one held", hub.Publish("my:held", mine) Is held, True
    Check "in the variable too", mine Is held, True
    hub.Remove "my:held"
End Sub

Sub Pulsars()
    Dim pulsar
    Set pulsar = system.Pulsar.CreatePulsar(250)
    Check "the shared one's slot", system.Pulsar.Index, 0
    Check "slot", pulsar.Index, 1
    Check "interval", system.Pulsar.CreatePulsar().PulseInterval, 60000
    Check "stopped", pulsar.Stopped, True
    pulsar.PulsePattern = "1000"
    pulsar.StartPulse
    Check "started", pulsar.Stopped, False
    pulsar.Dispose
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
    If found <> wanted Then Fail what & ": " & found & " instead of " & wanted
End Sub

Sub Fail(message)
    WScript.Echo "notifications.vbs: " & message
    WScript.Quit 1
End Sub
