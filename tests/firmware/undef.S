@ A few ordinary instructions and an IT block, then an instruction the core does
@ not define.
    .syntax unified
    .cpu cortex-m3
    .thumb
    .text

    .thumb_func
    .globl main
main:
    movs r0, #1
    adds r0, #2
    cmp r0, #3
    .globl it_block
it_block:
    itte eq
    moveq r1, #1
    moveq r2, #2
    movne r3, #3
    .globl after_it
after_it:
    mov.w r1, #0x1000
    add r0, r1
    .globl undef_insn
undef_insn:
    udf #0x42
    b .
