@ Stops in the way mailbox[0] selects, after a warm-up loop so that the faulting
@ block is reached through chained translated blocks. Each faulting instruction
@ has a label for the test to compare the stop PC with.
@   0 read unmapped   1 write unmapped   2 write flash   3 fetch unmapped
@   4 BKPT #1         5 peripheral write and read back, then exit
@   6 SVC             7 WFI, then exit
    .syntax unified
    .cpu cortex-m3
    .thumb
    .text

    .thumb_func
    .globl main
main:
    push {r4, lr}
    ldr r4, =mailbox
    movs r1, #100
warm_up:
    subs r1, #1
    bne warm_up
    ldr r0, [r4]
    cmp r0, #1
    beq do_write
    cmp r0, #2
    beq do_flash
    cmp r0, #3
    beq do_fetch
    cmp r0, #4
    beq do_bkpt
    cmp r0, #5
    beq do_peripheral
    cmp r0, #6
    beq do_svc
    cmp r0, #7
    beq do_wfi
do_read:
    ldr r1, =0x30000000
    movs r2, #7
    .globl fault_read
fault_read:
    ldr r3, [r1]
    b .
do_write:
    ldr r1, =0x30000004
    movs r2, #8
    .globl fault_write
fault_write:
    str r2, [r1]
    b .
do_flash:
    ldr r1, =0x08000100
    movs r2, #9
    .globl fault_flash
fault_flash:
    str r2, [r1]
    b .
do_fetch:
    ldr r1, =0x30000001
    blx r1
    b .
do_bkpt:
    movs r2, #10
    .globl fault_bkpt
fault_bkpt:
    bkpt #1
    b .
do_svc:
    movs r2, #11
    .globl fault_svc
fault_svc:
    svc #5
    b .
do_wfi:
    wfi
    wfi
    movs r0, #0
    pop {r4, pc}
do_peripheral:
    ldr r1, =0x40000000
    ldr r2, =0x12345678
    str r2, [r1]
    ldr r3, [r1]
    str r3, [r4, #4]
    movs r0, #0
    pop {r4, pc}
