; Dimmer: a PIC16F628A sets a lamp to one of sixteen levels with two buttons and
; remembers the level when the supply is switched off.
;
; Wiring: lamp (LED with series resistor, or the gate of a power transistor) from
; RB3 to ground; button "brighter" from RB4 to ground, "darker" from RB5 to ground
; (the device's own pull-ups hold them high); MCLR through 10 kilohms to the
; supply. No crystal; the internal 4 MHz oscillator gives cycles of 1 us.
;
; Timer 2 does both jobs: its period is that of the pulse-width modulation
; (1.024 ms, 977 Hz), and every sixteenth period (16.4 ms) the buttons are read,
; slowly enough for their contacts to have come to rest.

        processor 16f628a
        radix   dec
        #include <p16f628a.inc>
        errorlevel -302         ; banks are chosen with banksel throughout

; RB4 carries a button, so programming with a low voltage must be off.
        __CONFIG _INTOSC_OSC_NOCLKOUT & _WDT_ON & _PWRTE_ON & _MCLRE_ON & _BODEN_ON & _LVP_OFF & _CPD_OFF & _CP_OFF
        __IDLOCS H'628A'

BRIGHTER equ    4               ; bits of port B
DARKER  equ     5
TOP     equ     15              ; highest level
LEVEL   equ     0               ; EEPROM address of the level
QUIET   equ     122             ; readings without a change before the level is saved: 2 s

        cblock  H'70'           ; these are the same bytes in every bank
        level
        reading                 ; port B as it is now; a pressed button reads 0
        buttons                 ; port B at the reading before
        pressed                 ; 1 for a button that has just gone down
        quiet                   ; readings left until the level is saved, 0: saved
        endc

        org     H'000'
        goto    Start

; Returns the pulse width for level W: the square of the level, since the eye
; takes equal ratios of light for equal steps. The table stays below word 256,
; so PCLATH can keep its value after reset, 0.
Width   addwf   PCL, F
        dt      0, 1, 5, 10, 18, 28, 41, 56, 73, 92, 113, 137, 163, 192, 222, 255

Start   movlw   7               ; comparators off: port A is digital
        movwf   CMCON
        clrf    PORTA
        clrf    PORTB
        banksel TRISA
        movlw   B'00100000'     ; RA5 is MCLR; all others drive low
        movwf   TRISA
        movlw   B'00111000'     ; buttons are inputs; RB3 too, until the pulses run
        movwf   TRISB
        movlw   B'00001100'     ; pull-ups on, watchdog 16 x 18 ms (nominal)
        movwf   OPTION_REG
        movlw   255
        movwf   PR2

        movlw   LEVEL           ; the EEPROM's registers are in this bank as well
        movwf   EEADR
        bsf     EECON1, RD
        movf    EEDATA, W
        andlw   TOP             ; whatever the EEPROM holds, it makes a level
        movwf   level
        banksel PORTB

        call    ShowLevel
        movlw   B'00001100'     ; pulse-width modulation
        movwf   CCP1CON
        movlw   B'01111101'     ; timer 2 on, prescaler 1:4, a flag every 16 periods
        movwf   T2CON
        banksel TRISB
        bcf     TRISB, 3
        banksel PORTB
        movlw   H'FF'
        movwf   buttons
        clrf    quiet

Forever clrwdt
        btfss   PIR1, TMR2IF
        goto    Forever
        bcf     PIR1, TMR2IF

        movf    PORTB, W
        movwf   reading
        xorwf   buttons, W      ; what has changed since the last reading ...
        movwf   pressed
        movf    reading, W
        movwf   buttons
        comf    reading, W
        andwf   pressed, F      ; ... and is down now

        btfsc   pressed, BRIGHTER
        call    Brighter
        btfsc   pressed, DARKER
        call    Darker
        call    SaveWhenQuiet
        goto    Forever

Brighter
        movf    level, W
        sublw   TOP
        btfsc   STATUS, Z
        return
        incf    level, F
        goto    Changed

Darker  movf    level, F
        btfsc   STATUS, Z
        return
        decf    level, F

Changed movlw   QUIET
        movwf   quiet
        ; falls through

ShowLevel
        movf    level, W
        call    Width
        movwf   CCPR1L
        return

; Counts the readings since the last change and saves the level after QUIET of
; them: a byte of EEPROM bears many writes, but not one for every press.
SaveWhenQuiet
        movf    quiet, F
        btfsc   STATUS, Z
        return
        decfsz  quiet, F
        return
        banksel EEADR
        movlw   LEVEL
        movwf   EEADR
        movf    level, W
        movwf   EEDATA
        bsf     EECON1, WREN
        movlw   H'55'           ; the device takes the write only right after these
        movwf   EECON2          ; two values; no interrupt is enabled that could
        movlw   H'AA'           ; come between
        movwf   EECON2
        bsf     EECON1, WR
        bcf     EECON1, WREN
Writing btfsc   EECON1, WR      ; a few milliseconds, well within the watchdog's time
        goto    Writing
        banksel PORTB
        return

; Data EEPROM, from address 0 on without a gap: the level, half-way up in a new
; device, and a text that tells whoever reads the EEPROM what the device does.
        org     H'2100'
        de      8
        de      "Dimmer, 16 levels"

        end
