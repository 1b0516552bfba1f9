' Every member for numbers, dates and times, as a script calls it.
Option Explicit

Dim math, dates, watch
On Error Resume Next
Main
If Err.Number <> 0 Then Fail Err.Number & " " & Err.Description
WScript.Echo "numbers.vbs: passed"

Sub Main()
    Dim utilities
    Set utilities = CreateObject("VelaUtil10.MyUtil")
    Set math = utilities.MyMath
    Set dates = utilities.MyDatetime
    Check "shared", CreateObject("VelaUtil10.MyUtil").MyMath Is math, True
    Check "created", CreateObject("VelaUtil10.MathUtil") Is math, False
    Reading
    Rounding
    Words
    ByReference
    Comparing
    Digits
    Dating
    Times
    Stopwatch
End Sub

Sub Reading()
    Dim point
    point = math.SeparadorDecimais
    Check "separators", math.SeparadorMilhares & point, Mid(FormatNumber(1234.5, 1), 2, 1) & point
    Check "ValC", math.ValC("12" & point & "345"), CCur(12.345)
    Check "its type", VarType(math.ValC("1")), vbCurrency
    Check "ValD", math.ValD(" -1e3 "), -1000
    Check "ValI", math.ValI("2" & point & "5") & math.ValI("40000") & math.ValI(""), "200"
    Check "ValL", math.ValL("40000") & math.ValL("letters"), "400000"
    Check "ValS", VarType(math.ValS("0")), vbSingle
    Check "QueConteudoSql", math.QueConteudoSql("1" & point & "5") & math.QueConteudoSql("x"), _
        "1.50"
End Sub

Sub Rounding()
    Check "hundredths", math.Arredondar(CCur("2.345"), 4) & " " & math.Arredondar(-2.345, 4), _
        "2.35 -2.35"
    Check "units, tens, nothing", _
        math.Arredondar(15, 2) & math.Arredondar(15, 1) & math.Arredondar(15, 100), "15200"
    Check "ParteInteira", math.ParteInteira(3) & math.ParteInteira(4) & math.ParteInteira("2.7"), _
        "242"
    Check "ParteDecimal", math.ParteDecimal(12.345, 2), 35
    On Error Resume Next
    math.Arredondar 1, -3
    Expect "no such rounding", 11
    math.Arredondar CCur("922337203685477"), 4
    Expect "too large to round", 6
    math.Base36ToLong "1-"
    Expect "a bad digit", 5
    math.Base36ToLong "zzzzzz"
    Expect "beyond 32 bits", 6
    math.SwapInt 40000, 1
    Expect "beyond 16 bits", 6
End Sub

Sub Words()
    Check "money", math.Extenso(1234.5, "Euros"), _
        "Mil duzentos e trinta e quatro Euros e cinquenta Centimos "
    Check "millions", math.Extenso(2000000, """Libras"""), "Dois milh" & Chr(245) & "es de Libras"
    Check "a number", math.Extenso(-100, ""), "Menos cem "
End Sub

Sub ByReference()
    Dim first, second, numbers(4), i, listing
    first = 7
    second = "30"
    math.SwapInt first, second
    Check "SwapInt", first & " " & second, "30 7"
    first = 70000
    math.SwapLong first, second
    Check "SwapLong", first & " " & second, "7 70000"
    math.SwapLong (first), second
    Check "a copy", first & " " & second, "7 7"
    For i = 0 To 4
        numbers(i) = 5 - i
    Next
    math.OrdenarArrayINT numbers
    For i = 0 To 4
        listing = listing & numbers(i)
    Next
    Check "OrdenarArrayINT", listing, "51234"
End Sub

Sub Comparing()
    Check "numbers", math.Max(10, 9.5) & math.Min(10, 9.5), "109.5"
    Check "texts", math.Max("10", "9") & math.Min("10", "9"), "910"
    Check "mixed", math.Max("9", 10) & math.Max(10, "9"), "99"
    Check "Null", math.Max(Null, 3), 3
    Check "bits", math.DoisExpX(24) & " " & math.DoisExpX(25) & " " & math.DoisExpX(31), _
        "16777216 0 -2147483648"
    Check "BitTrue", math.BitTrue(5, 1) And math.BitTrue(5, 3) And math.BitTrue(&H80000000, 32), _
        True
    Check "bit 26", math.BitTrue(33554432, 26), False
End Sub

Sub Digits()
    Dim bytes, text
    text = "00ff1"
    bytes = math.HexToBinary(text)
    Check "bytes", VarType(bytes), vbArray + vbByte
    Check "BinaryToHex", math.BinaryToHex(bytes) & math.BinaryToHex(text), "00FF01"
    Check "an array of numbers", math.BinaryToHex(Array(1, "16", 255)), "0110FF"
    Check "HexToLong", math.HexToLong("FFFF") & " " & math.HexToLong("10000"), "-1 65536"
    Check "base 36", math.LongToBase36(1295) & math.LongToBase36(-5) & math.Base36ToLong("zz"), _
        "ZZ01295"
    Check "CriarMD5", math.CriarMD5("abc"), "900150983cd24fb0d6963f7d28e17f72"
    Check "CriarMD5b", math.CriarMD5b("abc"), "ce1473cf80c6b3fda8e3dfc006adc315"
End Sub

Sub Dating()
    Dim today
    Check "DataMaisDias", dates.DataMaisDias("28-02-2004", 2), "01-03-2004"
    Check "fields", _
        dates.QueDia("31-12-49") & dates.QueMes("31-12-49") & dates.QueAno("31-12-49"), "31122049"
    Check "DiasEntreDatas", dates.DiasEntreDatas("01-01-2004", "01-03-2004"), 60
    Check "unreadable", dates.DiasEntreDatas("x", "01-03-2004") & dates.ComparaDatas("", ""), _
        "-99990"
    Check "ComparaDatas", dates.ComparaDatas("02-01-2004", "01-01-2004"), 1
    Check "DataEntre", dates.DataEntre("01-01-2004", "01-01-2004", "02-01-2004"), True
    Check "last days", _
        dates.UltimoDiaDoMes(13, 2004) & dates.UltimoDiaDoMes(2, 2004) & dates.DiasDoMes(2100, 2), "312929"
    Check "DiaDaSemana", dates.DiaDaSemana(2004, "2", 29), 1
    Check "VerificaData", dates.VerificaData("29-02-1900") & dates.VerificaData("31-04-2004"), "06"
    Check "StandardStrData", dates.StandardStrData("31/12/2004") & dates.StandardStrData("?"), _
        "31-12-2004?"
    Check "FmtData", dates.FmtData, "dd-mm-yyyy"
    today = dates.StandardStrData(CStr(Date))
    Check "a date of the language", dates.VerificaData(today) & dates.QueDia(today), "0" & Day(Date)
End Sub

Sub Times()
    Check "HHMM", dates.HHMM("9:05") & " " & dates.HHMM("12h30"), "905 1230"
    Check "StrHora", dates.StrHora(905) & dates.StrHora("9:5"), "09:0509:05"
End Sub

Sub Stopwatch()
    Dim counted
    Set watch = CreateObject("VelaUtil10.TickCount")
    watch.Iniciar
    Do While watch.Milisegundos < 1200
    Loop
    watch.Parar
    counted = watch.Milisegundos
    Check "running, then stopped", counted >= 1200 And watch.Milisegundos = counted, True
    Check "Segundos", watch.Segundos, math.ParteInteira(counted / 1000)
    Check "Minutos and Horas", watch.Minutos & watch.Horas, "00"
    Check "in words", InStr(watch.Texto, watch.Segundos & " Segundo"), 1
    Check "by format", watch.Texto("hh:nn:") & watch.Texto("s"), "00:00:" & watch.Segundos
    dates.Contador.Iniciar
    Check "shared watch", dates.Contador.Milisegundos < 1000, True
    Check "one for all", dates.Contador Is CreateObject("VelaUtil10.DatetimeUtil").Contador, True
End Sub

Sub Expect(what, number)
    If Err.Number <> number Then Fail what & ": " & Err.Number & " " & Err.Description
    Err.Clear
End Sub

Sub Check(what, given, wanted)
    If given <> wanted Then Fail what & ": '" & given & "', not '" & wanted & "'"
End Sub

Sub Fail(why)
    WScript.Echo "numbers.vbs: " & why
    WScript.Quit 1
End Sub
