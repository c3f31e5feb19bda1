@ Vector table and start-up: copy .data, clear .bss, call main, exit with its result.
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
copy_data:
    cmp r0, r1
    bhs clear_bss
    ldr r3, [r2], #4
    str r3, [r0], #4
    b copy_data
clear_bss:
    ldr r0, =_sbss
    ldr r1, =_ebss
    movs r3, #0
clear_next:
    cmp r0, r1
    bhs call_main
    str r3, [r0], #4
    b clear_next
call_main:
    bl main
    bl semihost_exit
hang:
    b hang
