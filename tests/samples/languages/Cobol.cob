       IDENTIFICATION DIVISION.
       PROGRAM-ID. TOTALS.
      *> Adds up amounts.
       DATA DIVISION.
       WORKING-STORAGE SECTION.
       01 TOTAL PIC 9 VALUE ZERO.
       01 LABEL-TEXT PIC X(20) VALUE "it's the total".
       PROCEDURE DIVISION.
           PERFORM UNTIL TOTAL > 100
               ADD 12 TO TOTAL  *> one each
           END-PERFORM
           if total not = 0
               display 'total: ' TOTAL
           end-if
           STOP RUN.
       environment division.
       source-computer. x86.
       special-names. decimal-point is comma.
       select ledger access mode is sequential.
       inspect words tallying n for all high-value.
       open extend ledger i-o book.
       exec sql commit end-exec.
