#include "thunk.h"

#include <windows.h>

#include <cstddef>
#include <cstring>
#include <deque>

namespace bed {

static_assert(sizeof(Call) == 48 && offsetof(Call, words) == 8 && offsetof(Call, caller) == 16 &&
                  offsetof(Call, result) == 24,
              "the thunk below knows this layout");

extern "C" {

void bedThunk();
void bedReturned();

const void* bedBefore(Call* call) {
  call->lastError = GetLastError();
  const void* const next = call->function->before(*call);
  SetLastError(call->lastError);
  return next;
}

void bedAfter(Call* call) {
  call->lastError = GetLastError();
  call->function->after(*call);
  SetLastError(call->lastError);
}
}

// In the GNU assembler's syntax, for g++ and clang. Every stub jumps here with its HookedFunction
// in r11. The frame, from the stack pointer up: the home space of whatever is called (32 bytes),
// the copied stack arguments (20 words), the Call. The register arguments go to the home space that
// every caller provides, so that all words of the call lie in one row.
asm(R"(
    .text
    .globl bedThunk
    .def bedThunk; .scl 2; .type 32; .endef
    .seh_proc bedThunk
bedThunk:
    movq %rcx, 8(%rsp)
    movq %rdx, 16(%rsp)
    movq %r8, 24(%rsp)
    movq %r9, 32(%rsp)
    pushq %rbx
    .seh_pushreg %rbx
    pushq %rsi
    .seh_pushreg %rsi
    subq $248, %rsp
    .seh_stackalloc 248
    .seh_endprologue
    leaq 192(%rsp), %rbx
    leaq 272(%rsp), %rsi
    movq %r11, 0(%rbx)
    movq %rsi, 8(%rbx)
    movq 264(%rsp), %rax
    movq %rax, 16(%rbx)
    movq $0, 24(%rbx)
    movq $0, 32(%rbx)
    movq %rbx, %rcx
    call bedBefore
    testq %rax, %rax
    jz 2f
    movl $19, %ecx
1:  movq 32(%rsi,%rcx,8), %r10
    movq %r10, 32(%rsp,%rcx,8)
    decl %ecx
    jns 1b
    movq 0(%rsi), %rcx
    movq 8(%rsi), %rdx
    movq 16(%rsi), %r8
    movq 24(%rsi), %r9
    call *%rax
    .globl bedReturned
bedReturned:
    movq %rax, 24(%rbx)
2:  movq %rbx, %rcx
    call bedAfter
    movq 24(%rbx), %rax
    addq $248, %rsp
    popq %rsi
    popq %rbx
    ret
    .seh_endproc
)");

const void* makeStub(const HookedFunction& function) {
  static std::deque<HookedFunction> functions;
  // mov r11, function; mov r10, bedThunk; jmp r10
  uint8_t code[] = {0x49, 0xBB, 0, 0, 0, 0, 0, 0, 0,    0,    0x49, 0xBA,
                    0,    0,    0, 0, 0, 0, 0, 0, 0x41, 0xFF, 0xE2};
  const void* const operands[] = {&functions.emplace_back(function),
                                  reinterpret_cast<const void*>(&bedThunk)};
  std::memcpy(code + 2, &operands[0], sizeof(void*));
  std::memcpy(code + 12, &operands[1], sizeof(void*));
  void* const stub =
      VirtualAlloc(nullptr, sizeof code, MEM_COMMIT | MEM_RESERVE, PAGE_EXECUTE_READWRITE);
  return std::memcpy(stub, code, sizeof code);
}

bool isReturnToStub(const void* address) {
  return address == reinterpret_cast<const void*>(&bedReturned);
}

}  // namespace bed
