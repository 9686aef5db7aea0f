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
