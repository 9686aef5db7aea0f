' Counts the words of a text.
Imports System.IO

Public Class Counter
    Private ReadOnly limit As Integer = 10

    Public Function Count(ByVal text As String) As Long
        Dim total As Long = 0
        For Each word In text.Split(" "c)
            If word IsNot Nothing AndAlso word <> "it's" Then
                total += 1 ' one each
            End If
        NEXT
        REM The old way to comment.
        Return total * 1.5
    End Function
End Class
Private Type Point
    x As LongPtr
    y As Currency
End Type
Option Strict Off
Public Declare PtrSafe Function Tick Lib "user32" () As LongLong
ReDim Preserve names(10)
Dim found = From x In names Where x > 1 Order By x Group By x Into Count() ' a query
