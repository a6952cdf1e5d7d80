; Blink: a lamp on GP2 of a PIC12F509, half a second on, half a second off.
;
; Wiring: lamp (LED with series resistor) from GP2 to ground. No crystal; the
; internal 4 MHz oscillator gives instruction cycles of 1 us. GP3 is a plain
; input here, so it must not be left open: its weak pull-up is switched on.

        processor 12f509
        radix   dec
        #include <p12f509.inc>

        __CONFIG _IntRC_OSC & _WDT_OFF & _CP_OFF & _MCLRE_OFF
        __IDLOCS H'0509'

LAMP    equ     GP2

; Timer 0 counts 256 us steps. 195 of them are 49.9 ms, ten rounds half a second.
STEPS   equ     195
ROUNDS  equ     10

        cblock  H'07'
        output                  ; what GPIO shall show: never read back from the pins
        rounds
        endc

; Execution begins at the last word of program memory, which the factory filled
; with "movlw calibration"; the program counter then wraps round to here.
        org     H'000'
        movwf   OSCCAL

        movlw   B'10000111'     ; pull-ups on, no wake-up on change, timer 0 from the
        option                  ; instruction clock (frees GP2), prescaler 1:256
        clrf    output
        clrf    GPIO
        movlw   B'00001000'     ; GP3 can only be an input; all others drive
        tris    GPIO

Toggle  movlw   1 << LAMP
        xorwf   output, F
        movf    output, W
        movwf   GPIO

        movlw   ROUNDS
        movwf   rounds
Round   movlw   256 - STEPS     ; count up to the overflow
        movwf   TMR0
Count   movf    TMR0, W         ; not F: writing it back would clear the prescaler
        btfss   STATUS, Z
        goto    Count
        decfsz  rounds, F
        goto    Round
        goto    Toggle

        end
