; Beacon: a PIC12C508A that gives two short flashes about once a second and
; sleeps in between, so that a small battery lasts.
;
; Wiring: lamp (LED with series resistor) from GP1 to ground. No crystal; the
; internal 4 MHz oscillator gives instruction cycles of 1 us. GP3 is a plain
; input here, held high by its weak pull-up.
;
; The watchdog is the alarm clock: it ends the sleep with a reset, and everything
; runs again from the top.

        processor 12c508a
        radix   dec
        #include <p12c508a.inc>

        __CONFIG _IntRC_OSC & _WDT_ON & _CP_OFF & _MCLRE_OFF
        __IDLOCS H'0508'

LAMP    equ     GP1
FLASH   equ     30              ; ms
GAP     equ     120             ; ms

        cblock  H'07'
        milliseconds
        loops
        endc

; The factory's "movlw calibration" in the last word runs first, then this.
        org     H'000'
        movwf   OSCCAL

        movlw   B'10001110'     ; pull-ups on, no wake-up on change, timer 0 from the
        option                  ; instruction clock, watchdog 64 x 18 ms (nominal)
        clrf    GPIO
        movlw   B'00001000'     ; GP3 can only be an input; all others drive
        tris    GPIO

; NOT_PD is set by power-up and cleared by sleep. One long flash after power-up
; tells that the battery is in the right way round.
        btfss   STATUS, NOT_PD
        goto    Flashes
        bsf     GPIO, LAMP
        movlw   250
        call    Wait
        bcf     GPIO, LAMP
        movlw   250
        call    Wait

Flashes bsf     GPIO, LAMP
        movlw   FLASH
        call    Wait
        bcf     GPIO, LAMP
        movlw   GAP
        call    Wait
        bsf     GPIO, LAMP
        movlw   FLASH
        call    Wait
        bcf     GPIO, LAMP
        sleep                   ; clears the watchdog, so a full period follows

; Waits W milliseconds (W = 1..255) and keeps the watchdog quiet meanwhile.
Wait    movwf   milliseconds
Milli   movlw   199
        movwf   loops
        clrwdt
Loop    nop                     ; 5 cycles a turn
        nop
        decfsz  loops, F
        goto    Loop
        decfsz  milliseconds, F
        goto    Milli
        retlw   0

        end
