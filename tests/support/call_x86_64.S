# void kormtestTrampoline(CallFrame* frame): see call.h for the offsets.
    .text
    .globl kormtestTrampoline
    .hidden kormtestTrampoline
    .type kormtestTrampoline, @function
kormtestTrampoline:
    pushq %rbx
    pushq %rbp
    pushq %r12
    pushq %r13
    pushq %r14
    pushq %r15
    subq $24, %rsp
    movq %rdi, (%rsp)
    movq %rdi, %r11
    subq $512, %rsp
    movq %rsp, 1336(%r11)
    leaq 120(%rdi), %rsi
    movq %rsp, %rdi
    movl $64, %ecx
    cld
    rep movsq
    stmxcsr 736(%r11)
    fnstenv 744(%r11)
    fldcw 744(%r11)
    movsd 56(%r11), %xmm0
    movsd 64(%r11), %xmm1
    movsd 72(%r11), %xmm2
    movsd 80(%r11), %xmm3
    movsd 88(%r11), %xmm4
    movsd 96(%r11), %xmm5
    movsd 104(%r11), %xmm6
    movsd 112(%r11), %xmm7
    movq 632(%r11), %rbx
    movq 640(%r11), %rbp
    movq 648(%r11), %r12
    movq 656(%r11), %r13
    movq 664(%r11), %r14
    movq 672(%r11), %r15
    movq 8(%r11), %rdi
    movq 16(%r11), %rsi
    movq 24(%r11), %rdx
    movq 32(%r11), %rcx
    movq 40(%r11), %r8
    movq 48(%r11), %r9
    call *(%r11)
    movq 512(%rsp), %r11
    movq %rax, 728(%r11)
    movq %rbx, 680(%r11)
    movq %rbp, 688(%r11)
    movq %r12, 696(%r11)
    movq %r13, 704(%r11)
    movq %r14, 712(%r11)
    movq %r15, 720(%r11)
    stmxcsr 740(%r11)
    fnstenv 776(%r11)
    fldcw 744(%r11)
    pushfq
    popq %rax
    movq %rax, 808(%r11)
    cld
    subq %rsp, 1336(%r11)
    leaq 816(%r11), %rdi
    movq %rsp, %rsi
    movl $64, %ecx
    rep movsq
    addq $536, %rsp
    popq %r15
    popq %r14
    popq %r13
    popq %r12
    popq %rbp
    popq %rbx
    ret
    .size kormtestTrampoline, .-kormtestTrampoline
    .section .note.GNU-stack,"",@progbits
