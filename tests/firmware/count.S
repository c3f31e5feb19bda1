@ Counts in mailbox[0] for ever. Once the count reaches 1000 it writes '+' through
@ semihosting, so a test knows the loop is under way without polling.
    .syntax unified
    .cpu cortex-m3
    .thumb
    .text

    .thumb_func
    .globl main
main:
    ldr r4, =mailbox
    movs r5, #0
    str r5, [r4]
    movw r6, #1000
    .globl count_loop
count_loop:
    ldr r5, [r4]
    adds r5, #1
    .globl count_store
count_store:
    str r5, [r4]
    cmp r5, r6
    bne count_loop
    movs r0, #3
    adr r1, plus
    bkpt 0xab
    b count_loop
    .align 2
plus:
    .byte '+'
    .align 1
    .globl count_end
count_end:
    nop
