# Collects the place of a call's arguments for mutantCall(index, registers, stack).
    .text
    .globl mutantEntry
    .hidden mutantEntry
    .hidden mutantCall
    .type mutantEntry, @function
mutantEntry:
    movl (%esp), %eax
    leal 8(%esp), %edx
    pushl %ebp
    movl %esp, %ebp
    andl $-16, %esp
    subl $16, %esp
    movl %eax, (%esp)
    movl $0, 4(%esp)
    movl %edx, 8(%esp)
    call mutantCall
    movl %ebp, %esp
    popl %ebp
    addl $4, %esp
    ret
    .size mutantEntry, .-mutantEntry
    .section .note.GNU-stack,"",@progbits
