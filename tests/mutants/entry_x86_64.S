# Collects the registers of a call of a wrong library's stub for mutantCall(index, registers, stack).
    .text
    .globl mutantEntry
    .hidden mutantEntry
    .hidden mutantCall
    .type mutantEntry, @function
mutantEntry:
    subq $128, %rsp
    movq %rdi, (%rsp)
    movq %rsi, 8(%rsp)
    movq %rdx, 16(%rsp)
    movq %rcx, 24(%rsp)
    movq %r8, 32(%rsp)
    movq %r9, 40(%rsp)
    movsd %xmm0, 48(%rsp)
    movsd %xmm1, 56(%rsp)
    movsd %xmm2, 64(%rsp)
    movsd %xmm3, 72(%rsp)
    movsd %xmm4, 80(%rsp)
    movsd %xmm5, 88(%rsp)
    movsd %xmm6, 96(%rsp)
    movsd %xmm7, 104(%rsp)
    movq 128(%rsp), %rdi
    movq %rsp, %rsi
    leaq 144(%rsp), %rdx
    call mutantCall
    cltq
    addq $136, %rsp
    ret
    .size mutantEntry, .-mutantEntry
    .section .note.GNU-stack,"",@progbits
