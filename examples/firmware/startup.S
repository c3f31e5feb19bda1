@ Vector table and start-up: copy .data, clear .bss, call main, stop through
@ the debugger's exit call with main's result.
    .syntax unified
    .cpu cortex-m3
    .thumb

    .section .vectors, "a"
    .word _estack
    .word reset_handler

    .text
    .thumb_func
    .globl reset_handler
reset_handler:
    ldr r0, =_sdata
    ldr r1, =_edata
    ldr r2, =_sidata
1:  cmp r0, r1
    bhs 2f
    ldr r3, [r2], #4
    str r3, [r0], #4
    b 1b
2:  ldr r0, =_sbss
    ldr r1, =_ebss
    movs r3, #0
3:  cmp r0, r1
    bhs 4f
    str r3, [r0], #4
    b 3b
4:  bl main
    movs r0, #0x18
    ldr r1, =0x20026
    bkpt 0xab
5:  b 5b
