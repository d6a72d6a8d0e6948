// SPDX-License-Identifier: MIT
// What nobody may guess, and what memory must forget.
#include <gmock/gmock.h>
#include <hpdf_encryptdict.h>

#include <array>
#include <cstdlib>
#include <map>
#include <string>
#include <string_view>

#ifdef __linux__
#include <linux/filter.h>
#include <linux/seccomp.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstddef>
#include <iterator>
#endif

#include "plugin/engine/pages/page_tree.h"
#include "plugin/engine/security/encryption_mode.h"
#include "plugin/engine/security/secrets.h"
#include "tests/plugin/engine/driver/library_document.h"

namespace quillbar {
namespace {

using testing::Each;
using testing::Not;

constexpr char kOwner[] = "correct horse battery", kUser[] = "staple of users";

std::string IdentifierOf(HPDF_Doc document) {
  const HPDF_Encrypt encryption = HPDF_EncryptDict_GetAttr(document->encrypt_dict);
  return {reinterpret_cast<const char *>(encryption->encrypt_id), sizeof encryption->encrypt_id};
}

TEST(Secrets, SystemHasRandomBytes) {
  std::array<std::byte, 64> first{}, second{};
  ASSERT_TRUE(engine::FillFromSystem(first));
  ASSERT_TRUE(engine::FillFromSystem(second));
  EXPECT_NE(first, second);
  std::map<std::byte, int> counts;
  for (const std::byte byte : first) ++counts[byte];
  EXPECT_GT(counts.size(), 32U) << "of 64 bytes some 57 differ";
}

TEST(Secrets, DocumentsOfOneMomentHaveIdentifiersOfTheirOwn) {
  std::map<std::string, int> identifiers;
  for (int i = 0; i < 20; ++i) {
    LibraryDocument document;
    Call<engine::AddPage>(document.document);
    ASSERT_EQ(Call<HPDF_SetPassword>(document.document, kOwner, kUser), HPDF_OK);
    EXPECT_NE(document.SaveToString(), "");
    ++identifiers[IdentifierOf(document.document)];
  }
  EXPECT_EQ(identifiers.size(), 20U);
}

TEST(Secrets, WipedMemoryIsZero) {
  std::string text = "secret";
  HPDF_Wipe(text.data(), 4);
  EXPECT_EQ(text, std::string("\0\0\0\0et", 6));
}

// Blocks that are looked at when they are given back.
std::map<void *, std::size_t> blocks;
int blocksWithSecrets = 0;

void *Allocate(HPDF_UINT size) {
  void *const block = std::malloc(size);
  blocks[block] = size;
  return block;
}

void Free(void *block) {
  if (block == nullptr) return;
  const std::string_view content(static_cast<const char *>(block), blocks.at(block));
  for (const char *secret : {kOwner, kUser}) {
    if (content.find(secret) != content.npos) ++blocksWithSecrets;
  }
  blocks.erase(block);
  std::free(block);
}

TEST(Secrets, PasswordsAreWipedBeforeMemoryIsGivenBack) {
  for (const HPDF_EncryptMode mode : {HPDF_ENCRYPT_R2, HPDF_ENCRYPT_R3}) {
    HPDF_Doc document = HPDF_NewEx([](HPDF_STATUS, HPDF_STATUS, void *) {}, Allocate, Free, 0, nullptr);
    ASSERT_NE(document, nullptr);
    Call<engine::AddPage>(document);
    ASSERT_EQ(Call<HPDF_SetPassword>(document, kOwner, kUser), HPDF_OK);
    ASSERT_EQ(Call<engine::SetEncryptionMode>(document, mode, 16), HPDF_OK);
    ASSERT_EQ(Call<engine::SaveToMemory>(document), HPDF_OK);
    int holders = 0;
    for (const auto &[block, size] : blocks) {
      const std::string_view content(static_cast<const char *>(block), size);
      if (content.find(kOwner) != content.npos) ++holders;
    }
    EXPECT_EQ(holders, 1) << "a document that is saved again needs its password";
    HPDF_Free(document);
    EXPECT_EQ(blocksWithSecrets, 0);
    EXPECT_TRUE(blocks.empty());
  }
}

TEST(Secrets, SumOverAPasswordIsWipedFromTheStack) {
  HPDF_MD5_CTX sum;
  HPDF_BYTE digest[16];
  HPDF_MD5Init(&sum);
  HPDF_MD5Update(&sum, reinterpret_cast<const HPDF_BYTE *>(kOwner), sizeof kOwner);
  HPDF_MD5Final(digest, &sum);
  const std::string_view rest(reinterpret_cast<const char *>(&sum), sizeof sum);
  EXPECT_THAT(rest, Each('\0'));
  EXPECT_THAT(std::string_view(reinterpret_cast<const char *>(digest), sizeof digest), Not(Each('\0')));
}

#ifdef __linux__

// A process in which the kernel's call for random bytes fails with `problem`, as if there were none.
bool LoseSystemCall(int problem) {
  sock_filter program[] = {
      BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, nr)),
      BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, SYS_getrandom, 0, 1),
      BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ERRNO | static_cast<unsigned>(problem)),
      BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW),
  };
  const sock_fprog filter{static_cast<unsigned short>(std::size(program)), program};
  return prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) == 0 && prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &filter) == 0;
}

constexpr int kCannotFilter = 77;

// The exit status of a process of its own that does no more than the test: what looks for leaks where a process ends
// would find those of a program in the middle of its work.
int ExitStatusOf(int (*test)()) {
  const pid_t child = fork();
  if (child == 0) _exit(test());
  int status = 0;
  EXPECT_EQ(waitpid(child, &status, 0), child);
  return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

TEST(Secrets, ComeFromTheDeviceWhereTheKernelHasNoCall) {
  const int status = ExitStatusOf([] {
    if (!LoseSystemCall(ENOSYS)) return kCannotFilter;
    std::array<std::byte, 64> first{}, second{};
    const bool areFilled = engine::FillFromSystem(first) && engine::FillFromSystem(second);
    return areFilled && first != second ? 0 : 1;
  });
  if (status == kCannotFilter) GTEST_SKIP() << "system calls can't be made to fail here";
  EXPECT_EQ(status, 0);
}

TEST(Secrets, DifferEvenWithoutTheSystemsRandomBytes) {
  const int status = ExitStatusOf([] {
    if (!LoseSystemCall(ENOSYS)) return kCannotFilter;
    rlimit files{};
    getrlimit(RLIMIT_NOFILE, &files);
    const rlimit none{0, files.rlim_max};
    setrlimit(RLIMIT_NOFILE, &none);
    std::array<std::byte, 64> first{}, second{};
    const bool areFilled = engine::FillFromSystem(first);
    HPDF_FillWithRandom(first.data(), 64);
    HPDF_FillWithRandom(second.data(), 64);
    setrlimit(RLIMIT_NOFILE, &files);
    return !areFilled && first != second && first != std::array<std::byte, 64>{} ? 0 : 1;
  });
  if (status == kCannotFilter) GTEST_SKIP() << "system calls can't be made to fail here";
  EXPECT_EQ(status, 0);
}

#endif

}  // namespace
}  // namespace quillbar
