; Tones: a PIC16F877A plays the notes of a scale on a small loudspeaker, chosen
; from a terminal.
;
; Wiring: 20 MHz crystal; RC2 through 1 kilohm and 22 nF to ground (which turns
; the pulses into a voltage) to an amplifier; RC6 is the serial output and RC7 the
; serial input, 9600 baud, 8 data bits, no parity (logic level: a terminal with
; RS-232 levels needs a line driver); a lamp (LED with series resistor) from RB0
; to ground is lit while a tone sounds.
;
; A tone is made from a table of one sine wave. Once per period of the pulse-width
; modulation (256 cycles of 0.2 us: 19531 times a second) a number, the step, is
; added to the 16-bit phase, and the upper byte of the phase picks the sample. So
; step = frequency * 65536 / 19531.25. The steps of the notes are in the EEPROM.

        processor 16f877a
        radix   dec
        #include <p16f877a.inc>
        errorlevel -302         ; banks are chosen with banksel throughout

        __CONFIG _HS_OSC & _WDT_OFF & _PWRTE_ON & _BODEN_ON & _LVP_OFF & _CPD_OFF & _WRT_OFF & _DEBUG_OFF & _CP_OFF
        __IDLOCS H'877A'

LAMP    equ     0               ; bit of port B
BAUD    equ     129             ; 20 MHz / (16 * (129 + 1)) = 9615 baud
NOTES   equ     8

        cblock  H'70'           ; these are the same bytes in every bank
        savedW
        savedStatus
        savedPclath
        phaseLow
        phaseHigh
        stepLow
        stepHigh
        newStepLow
        key
        wordHigh                ; the two characters of a word of text
        wordLow
        endc

        org     H'000'
        clrf    PCLATH
        goto    Start

; Every interrupt is one sample; 256 cycles lie between two of them.
        org     H'004'
        movwf   savedW
        swapf   STATUS, W       ; swapf leaves the flags alone
        clrf    STATUS          ; bank 0
        movwf   savedStatus
        movf    PCLATH, W
        movwf   savedPclath

        bcf     PIR1, TMR2IF
        movf    stepLow, W
        addwf   phaseLow, F
        movf    stepHigh, W
        btfsc   STATUS, C
        addlw   1               ; steps are far below 65280: this cannot overflow
        addwf   phaseHigh, F
        movlw   HIGH Sine
        movwf   PCLATH
        movf    phaseHigh, W
        call    Sample
        movwf   CCPR1L

        movf    savedPclath, W
        movwf   PCLATH
        swapf   savedStatus, W
        movwf   STATUS
        swapf   savedW, F
        swapf   savedW, W
        retfie

Sample  movwf   PCL             ; PCLATH and W are the address in the table

Start   clrf    PORTA
        clrf    PORTB
        clrf    PORTC
        clrf    PORTD
        clrf    PORTE
        banksel TRISA
        movlw   6               ; no analogue inputs
        movwf   ADCON1
        clrf    TRISA
        clrf    TRISB
        movlw   B'11000000'     ; the serial port takes both its pins as inputs
        movwf   TRISC
        clrf    TRISD
        clrf    TRISE
        movlw   255
        movwf   PR2
        movlw   BAUD
        movwf   SPBRG
        movlw   B'00100100'     ; transmitter on, asynchronous, high-speed divider
        movwf   TXSTA
        banksel RCSTA
        movlw   B'10010000'     ; serial port on, receiver on
        movwf   RCSTA

        clrf    phaseLow        ; silence: the phase stands still at the middle
        clrf    phaseHigh
        clrf    stepLow
        clrf    stepHigh
        movlw   128
        movwf   CCPR1L
        movlw   B'00001100'     ; pulse-width modulation
        movwf   CCP1CON
        movlw   B'00000100'     ; timer 2 on, no prescaler, a flag every period
        movwf   T2CON
        banksel PIE1
        bsf     PIE1, TMR2IE
        banksel PORTB
        bsf     INTCON, PEIE
        bsf     INTCON, GIE

        call    SendText
Forever call    Receive
        movwf   key
        call    Send            ; the echo

        movlw   '0'
        subwf   key, W          ; W = number of the note, 0: silence
        btfsc   STATUS, Z
        goto    Silence
        btfss   STATUS, C
        goto    Unknown         ; below "0"
        sublw   NOTES
        btfss   STATUS, C
        goto    Unknown         ; above the last note
        call    PlayNote
        goto    Forever
Unknown call    SendText
        goto    Forever

Silence bcf     INTCON, GIE
        clrf    stepLow
        clrf    stepHigh
        clrf    phaseLow
        clrf    phaseHigh
        bsf     INTCON, GIE
        bcf     PORTB, LAMP
        goto    Forever

; Takes the step of note n from the EEPROM and plays it. W is NOTES - n.
PlayNote
        sublw   NOTES - 1       ; n - 1: the first note is number 0 there
        movwf   key
        bcf     STATUS, C
        rlf     key, F          ; two bytes to a note
        movf    key, W
        call    ReadEeprom
        movwf   newStepLow
        incf    key, W
        call    ReadEeprom
        bcf     INTCON, GIE     ; both bytes change between two samples
        movwf   stepHigh
        movf    newStepLow, W
        movwf   stepLow
        bsf     INTCON, GIE
        bsf     PORTB, LAMP
        return

; Returns the EEPROM byte at address W in W.
ReadEeprom
        banksel EEADR
        movwf   EEADR
        banksel EECON1
        bcf     EECON1, EEPGD
        bsf     EECON1, RD
        banksel EEDATA
        movf    EEDATA, W
        banksel PORTB
        return

; Returns the next received character in W. An overrun stops the receiver until
; it is switched off and on again.
Receive btfss   RCSTA, OERR
        goto    Received
        bcf     RCSTA, CREN
        bsf     RCSTA, CREN
Received
        btfss   PIR1, RCIF
        goto    Receive
        movf    RCREG, W
        return

; Sends W as soon as the transmitter takes it.
Send    btfss   PIR1, TXIF
        goto    Send
        movwf   TXREG
        return

; Sends the text at Text. The device reads it out of its own program memory, two
; 7-bit characters to a word, up to a zero character.
SendText
        banksel EEADR
        movlw   LOW Text
        movwf   EEADR
        movlw   HIGH Text
        movwf   EEADRH
NextWord
        banksel EECON1
        bsf     EECON1, EEPGD
        bsf     EECON1, RD
        nop                     ; the device reads during these two
        nop
        banksel EEDATA
        rlf     EEDATA, W       ; bit 7 belongs to the first character
        rlf     EEDATH, W
        andlw   H'7F'
        movwf   wordHigh
        movf    EEDATA, W
        andlw   H'7F'
        movwf   wordLow
        incf    EEADR, F
        btfsc   STATUS, Z
        incf    EEADRH, F
        banksel PORTB

        movf    wordHigh, W
        btfsc   STATUS, Z
        return
        call    Send
        movf    wordLow, W
        btfsc   STATUS, Z
        return
        call    Send
        banksel EEADR
        goto    NextWord

; One sine wave in 256 samples, 127.5 + 127.5 * sin(2 * pi * n / 256) rounded. It
; fills all the words of one value of PCLATH.
        org     H'200'
Sine
        dt      128, 131, 134, 137, 140, 143, 146, 149, 152, 155, 158, 162, 165, 167, 170, 173
        dt      176, 179, 182, 185, 188, 190, 193, 196, 198, 201, 203, 206, 208, 211, 213, 215
        dt      218, 220, 222, 224, 226, 228, 230, 232, 234, 235, 237, 238, 240, 241, 243, 244
        dt      245, 246, 248, 249, 250, 250, 251, 252, 253, 253, 254, 254, 254, 255, 255, 255
        dt      255, 255, 255, 255, 254, 254, 254, 253, 253, 252, 251, 250, 250, 249, 248, 246
        dt      245, 244, 243, 241, 240, 238, 237, 235, 234, 232, 230, 228, 226, 224, 222, 220
        dt      218, 215, 213, 211, 208, 206, 203, 201, 198, 196, 193, 190, 188, 185, 182, 179
        dt      176, 173, 170, 167, 165, 162, 158, 155, 152, 149, 146, 143, 140, 137, 134, 131
        dt      128, 124, 121, 118, 115, 112, 109, 106, 103, 100, 97, 93, 90, 88, 85, 82
        dt      79, 76, 73, 70, 67, 65, 62, 59, 57, 54, 52, 49, 47, 44, 42, 40
        dt      37, 35, 33, 31, 29, 27, 25, 23, 21, 20, 18, 17, 15, 14, 12, 11
        dt      10, 9, 7, 6, 5, 5, 4, 3, 2, 2, 1, 1, 1, 0, 0, 0
        dt      0, 0, 0, 0, 1, 1, 1, 2, 2, 3, 4, 5, 5, 6, 7, 9
        dt      10, 11, 12, 14, 15, 17, 18, 20, 21, 23, 25, 27, 29, 31, 33, 35
        dt      37, 40, 42, 44, 47, 49, 52, 54, 57, 59, 62, 65, 67, 70, 73, 76
        dt      79, 82, 85, 88, 90, 93, 97, 100, 103, 106, 109, 112, 115, 118, 121, 124
; The second page of program memory holds no instructions, only the text. Each line
; has an even number of characters: an odd one would be filled up with the zero that
; ends the text.
        org     H'800'
Text    da      "\r\nTones from a PIC16F877A.\r\n\r\n"
        da      "  1  C   261.6 Hz    5  G   392.0 Hz\r\n"
        da      "  2  D   293.7 Hz    6  A   440.0 Hz\r\n"
        da      "  3  E   329.6 Hz    7  B   493.9 Hz\r\n"
        da      "  4  F   349.2 Hz    8  C   523.3 Hz\r\n"
        da      "  0  silence         other keys: this list\r\n\r\n"
        da      0

; Data EEPROM: the steps of the notes, low byte first.
        org     H'2100'
        de      LOW  878, HIGH  878     ; C, 261.63 Hz
        de      LOW  985, HIGH  985     ; D, 293.66 Hz
        de      LOW 1106, HIGH 1106     ; E, 329.63 Hz
        de      LOW 1172, HIGH 1172     ; F, 349.23 Hz
        de      LOW 1315, HIGH 1315     ; G, 392.00 Hz
        de      LOW 1476, HIGH 1476     ; A, 440.00 Hz
        de      LOW 1657, HIGH 1657     ; B, 493.88 Hz
        de      LOW 1756, HIGH 1756     ; C, 523.25 Hz

        end
