; Greeting: a PIC16F84A that counts how often it has been started, shows the
; count on eight lamps and sends a greeting with the count once a second.
;
; Wiring: 4 MHz crystal; lamps (LEDs with series resistors) from RB0..RB7 to
; ground; RA0 is a serial output, 2400 baud, 8 data bits, no parity, idle high
; (logic level: a terminal with RS-232 levels needs a line driver).
;
; The greeting and the count live in the data EEPROM and are programmed with the
; device. Another greeting needs no other program.

        processor 16f84a
        radix   dec
        #include <p16f84a.inc>
        errorlevel -302         ; banks are chosen with banksel throughout

        __CONFIG _XT_OSC & _WDT_OFF & _PWRTE_ON & _CP_OFF
        __IDLOCS H'084A'

TX      equ     0               ; bit of port A
COUNT   equ     0               ; EEPROM addresses: the count,
GREETING equ    1               ; the text after it
PAUSE   equ     15              ; overflows of timer 0, 65.5 ms each

        cblock  H'0C'
        count                   ; starts so far, this one included
        rest                    ; the count while its digits are taken off
        digit
        address                 ; next EEPROM byte of the greeting
        txByte
        txBits
        loops
        overflows
        endc

        org     H'000'
        bsf     PORTA, TX       ; idle before the pin begins to drive
        clrf    PORTB
        banksel TRISA
        clrf    TRISA
        clrf    TRISB
        movlw   B'10000111'     ; no pull-ups, timer 0 from the instruction clock,
        movwf   OPTION_REG      ; prescaler 1:256
        banksel PORTA

        movlw   COUNT
        call    ReadEeprom
        movwf   count
        incf    count, F        ; 255 is followed by 0
        call    SaveCount
        movf    count, W
        movwf   PORTB

Forever call    WaitASecond     ; first of all, so that the line has been idle before
        call    SendGreeting
        call    SendCount
        movlw   13
        call    SendByte
        movlw   10
        call    SendByte
        goto    Forever

; Sends the text that begins at EEPROM address GREETING and ends before a zero byte.
SendGreeting
        movlw   GREETING
        movwf   address
NextCharacter
        movf    address, W
        call    ReadEeprom
        iorlw   0
        btfsc   STATUS, Z
        return
        call    SendByte
        incf    address, F
        goto    NextCharacter

; Sends the count as three decimal digits.
SendCount
        movf    count, W
        movwf   rest
        movlw   100
        call    SendDigit
        movlw   10
        call    SendDigit
        movlw   1
        ; falls through for the units

; Sends how often W goes into rest, as a digit, and leaves the remainder in rest.
SendDigit
        movwf   loops
        movlw   '0'
        movwf   digit
        movf    loops, W
Subtract
        subwf   rest, F
        btfss   STATUS, C       ; a clear carry is a borrow
        goto    TooFar
        incf    digit, F
        goto    Subtract
TooFar  addwf   rest, F
        movf    digit, W
        ; falls through to send the digit

; Sends W: a start bit, eight data bits from the lowest up, a stop bit.
; One turn takes 417 cycles of 1 us; 2400 baud asks for 416.7.
SendByte
        movwf   txByte
        movlw   10
        movwf   txBits
        bcf     STATUS, C       ; the start bit is a low one
SendBit btfss   STATUS, C
        bcf     PORTA, TX
        btfsc   STATUS, C
        bsf     PORTA, TX
        movlw   135
        movwf   loops
Bit     decfsz  loops, F        ; leaves the carry alone
        goto    Bit
        goto    $ + 1
        bsf     STATUS, C       ; ones move in from above: the stop bit
        rrf     txByte, F
        decfsz  txBits, F
        goto    SendBit
        return

; Returns the EEPROM byte at address W in W.
ReadEeprom
        movwf   EEADR
        banksel EECON1
        bsf     EECON1, RD
        banksel EEDATA
        movf    EEDATA, W
        return

; Writes the count to its place in the EEPROM and waits until it is there.
SaveCount
        movlw   COUNT
        movwf   EEADR
        movf    count, W
        movwf   EEDATA
        banksel EECON1
        bsf     EECON1, WREN
        movlw   H'55'           ; the device takes the write only right after
        movwf   EECON2          ; these two values; no interrupt is enabled that
        movlw   H'AA'           ; could come between
        movwf   EECON2
        bsf     EECON1, WR
        bcf     EECON1, WREN
Writing btfsc   EECON1, WR
        goto    Writing
        banksel PORTA
        return

WaitASecond
        movlw   PAUSE
        movwf   overflows
        clrf    TMR0
        bcf     INTCON, T0IF
Overflow
        btfss   INTCON, T0IF
        goto    Overflow
        bcf     INTCON, T0IF
        decfsz  overflows, F
        goto    Overflow
        return

; Data EEPROM, from address 0 on without a gap: the count, then the greeting.
        org     H'2100'
        de      0
        de      "Hello from the EEPROM! Start ", 0

        end
