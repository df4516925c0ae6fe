# void kormtestTrampoline(CallFrame* frame): see call.h for the offsets.
    .text
    .globl kormtestTrampoline
    .hidden kormtestTrampoline
    .type kormtestTrampoline, @function
kormtestTrampoline:
    pushl %ebx
    pushl %ebp
    pushl %esi
    pushl %edi
    movl 20(%esp), %eax
    movl %esp, %ecx
    # Above the argument area: the frame's address and the stack pointer to come back to.
    andl $-16, %esp
    subl $64, %esp
    addl 1328(%eax), %esp
    movl %eax, (%esp)
    movl %ecx, 4(%esp)
    subl $512, %esp
    movl %esp, 1336(%eax)
    leal 120(%eax), %esi
    movl %esp, %edi
    movl $128, %ecx
    cld
    rep movsl
    stmxcsr 736(%eax)
    fnstenv 744(%eax)
    fldcw 744(%eax)
    movl 632(%eax), %ebx
    movl 640(%eax), %ebp
    movl 648(%eax), %esi
    movl 656(%eax), %edi
    movl 8(%eax), %ecx
    movl 16(%eax), %edx
    call *(%eax)
    movl 512(%esp), %edx
    movl %eax, 728(%edx)
    movl %ebx, 680(%edx)
    movl %ebp, 688(%edx)
    movl %esi, 696(%edx)
    movl %edi, 704(%edx)
    stmxcsr 740(%edx)
    fnstenv 776(%edx)
    fldcw 744(%edx)
    pushfl
    popl %eax
    movl %eax, 808(%edx)
    cld
    subl %esp, 1336(%edx)
    leal 816(%edx), %edi
    movl %esp, %esi
    movl $128, %ecx
    rep movsl
    movl 516(%esp), %esp
    popl %edi
    popl %esi
    popl %ebp
    popl %ebx
    ret
    .size kormtestTrampoline, .-kormtestTrampoline
    .section .note.GNU-stack,"",@progbits
