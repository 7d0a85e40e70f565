#include "thunk.h"

#include <windows.h>

#include <cstddef>
#include <cstring>
#include <initializer_list>
#include <stdexcept>

namespace bed {

static_assert(sizeof(Call) == 40 && offsetof(Call, words) == 8 && offsetof(Call, caller) == 16 &&
                  offsetof(Call, result) == 24,
              "the thunk below knows this layout");

extern "C" {

void bedThunk();
void bedReturned();

const void* bedBefore(Call* call) {
  return call->function->before(*call);
}

void bedAfter(Call* call) {
  call->function->after(*call);
}
}

// In the GNU assembler's syntax, for g++ and clang. Every stub jumps here with its HookedFunction
// in r11. The frame, from the stack pointer up: the home space of whatever is called (32 bytes),
// the copied stack arguments (20 words), xmm0 to xmm3, the Call. The register arguments go to the
// home space that every caller provides, so that all words of the call lie in one row.
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
    subq $296, %rsp
    .seh_stackalloc 296
    .seh_endprologue
    movaps %xmm0, 192(%rsp)
    movaps %xmm1, 208(%rsp)
    movaps %xmm2, 224(%rsp)
    movaps %xmm3, 240(%rsp)
    leaq 256(%rsp), %rbx
    leaq 320(%rsp), %rsi
    movq %r11, 0(%rbx)
    movq %rsi, 8(%rbx)
    movq 312(%rsp), %rax
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
    movaps 192(%rsp), %xmm0
    movaps 208(%rsp), %xmm1
    movaps 224(%rsp), %xmm2
    movaps 240(%rsp), %xmm3
    movq 0(%rsi), %rcx
    movq 8(%rsi), %rdx
    movq 16(%rsi), %r8
    movq 24(%rsi), %r9
    call *%rax
    .globl bedReturned
bedReturned:
    movq %rax, 24(%rbx)
    movaps %xmm0, 192(%rsp)
2:  movq %rbx, %rcx
    call bedAfter
    movq 24(%rbx), %rax
    movaps 192(%rsp), %xmm0
    addq $296, %rsp
    popq %rsi
    popq %rbx
    ret
    .seh_endproc
)");

namespace {

/// mov r11, function; mov r10, bedThunk; jmp r10.
constexpr size_t kStubSize = 32;
constexpr size_t kPoolSize = size_t{1} << 16;

std::byte* nextStub() {
  static std::byte* next = nullptr;
  static std::byte* end = nullptr;
  if (next == end) {
    next = static_cast<std::byte*>(
        VirtualAlloc(nullptr, kPoolSize, MEM_COMMIT | MEM_RESERVE, PAGE_EXECUTE_READWRITE));
    if (next == nullptr) {
      throw std::runtime_error("no memory for stubs");
    }
    end = next + kPoolSize;
  }
  std::byte* const stub = next;
  next += kStubSize;
  return stub;
}

std::byte* emit(std::byte* at, std::initializer_list<uint8_t> code, const void* operand) {
  for (const uint8_t byte : code) {
    *at++ = std::byte{byte};
  }
  std::memcpy(at, &operand, sizeof operand);
  return at + sizeof operand;
}

}  // namespace

const void* makeStub(HookedFunction& function) {
  std::byte* const stub = nextStub();
  std::byte* at = emit(stub, {0x49, 0xBB}, &function);
  at = emit(at, {0x49, 0xBA}, reinterpret_cast<const void*>(&bedThunk));
  const uint8_t jump[] = {0x41, 0xFF, 0xE2};
  std::memcpy(at, jump, sizeof jump);
  return stub;
}

bool isReturnToStub(const void* address) {
  return address == reinterpret_cast<const void*>(&bedReturned);
}

}  // namespace bed
