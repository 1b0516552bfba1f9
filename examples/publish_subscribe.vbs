' Publishes a notification and subscribes to it: how the parts of a program tell each other things
' without knowing each other.
'
'     ./dev wine cscript //nologo examples/publish_subscribe.vbs
'     cscript //nologo publish_subscribe.vbs      where the library is registered already
Option Explicit

Dim hub, stock, accounts
Set hub = CreateObject("VelaUtil10.MyUtil").MySys.Notifications

On Error Resume Next
Main
If Err.Number <> 0 Then
    WScript.Echo "Failed with " & Err.Number & " from " & Err.Source & ": " & Err.Description
    WScript.Quit 1
End If

Sub Main()
    Dim saved
    Set stock = NewDepartment("Stock")
    Set accounts = NewDepartment("Accounts")
    accounts.CreditLimit = 1000

    WScript.Echo "Stock comes first and is shown what there is:"
    hub.Welcome stock
    WScript.Echo "A notification of our own; those who are there are told of it:"
    Set saved = hub.Publish("my:order_saved")
    WScript.Echo "Accounts comes later and is shown it too:"
    hub.Welcome accounts

    WScript.Echo "An order of 250:"
    WScript.Echo "  everybody agreed: " & saved.Notify(250)
    WScript.Echo "An order of 5000:"
    WScript.Echo "  everybody agreed: " & hub.ItemByTAG("my:order_saved").Notify(5000)

    WScript.Echo "Accounts leaves; an order of 5000:"
    hub.Goodbye accounts
    WScript.Echo "  everybody agreed: " & saved.Notify(5000)
    hub.Goodbye stock
    WScript.Echo "Nobody is left: " & saved.Subscribers.Count & " subscribers"
End Sub

' Any object with a method Notify(sender, E) can subscribe.
Class Department
    Public Name
    Public CreditLimit

    Sub Notify(sender, E)
        Select Case E.NotificationID
            Case 1 ' welcome: E.Parameter is a notification on offer
                If E.Parameter.Tag = "MY:ORDER_SAVED" Then
                    WScript.Echo "  " & Name & " subscribes to " & E.Parameter.Tag
                    E.Parameter.Subscribers.Add Me
                End If
            Case 2 ' goodbye: the same round again, to unsubscribe
                E.Parameter.Subscribers.Remove Me
            Case Else
                WScript.Echo "  " & Name & " hears " & sender.Tag & " with " & E.Parameter
                If Not IsEmpty(CreditLimit) Then
                    If E.Parameter > CreditLimit Then E.Cancel = True
                End If
        End Select
    End Sub
End Class

Function NewDepartment(name)
    Set NewDepartment = New Department
    NewDepartment.Name = name
End Function
