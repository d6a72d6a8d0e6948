// SPDX-License-Identifier: MIT
// Encryption settings in the library: only those that viewers know are taken, and a refused one changes
// nothing.
#include <gmock/gmock.h>
#include <hpdf_encryptdict.h>

#include <memory>

#include "plugin/engine/pages/page_tree.h"
#include "plugin/engine/security/encryption_mode.h"
#include "tests/plugin/engine/driver/library_document.h"

namespace quillbar {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

constexpr auto Mode(int revision) { return static_cast<HPDF_EncryptMode>(revision); }

class EncryptionMode : public testing::Test {
 protected:
  HPDF_STATUS Set(int revision, unsigned keyLength) {
    return Call<engine::SetEncryptionMode>(document_.document, Mode(revision), keyLength);
  }

  LibraryDocument document_;
};

TEST_F(EncryptionMode, WithoutAPasswordThereIsNothingToSet) {
  EXPECT_EQ(Set(2, 5), HPDF_STATUS{HPDF_DOC_ENCRYPTDICT_NOT_FOUND});
  EXPECT_THAT(document_.TakeCodes(), ElementsAre(HPDF_DOC_ENCRYPTDICT_NOT_FOUND));
}

TEST_F(EncryptionMode, RevisionsOtherThanTwoAndThreeAreRefused) {
  ASSERT_EQ(Call<HPDF_SetPassword>(document_.document, "owner", "user"), HPDF_OK);
  for (const int revision : {0, 1, 4, 5, 6, 255, -1}) {
    EXPECT_EQ(Set(revision, 16), HPDF_STATUS{HPDF_INVALID_PARAMETER}) << revision;
    EXPECT_THAT(document_.TakeCodes(), ElementsAre(HPDF_INVALID_PARAMETER));
  }
  EXPECT_EQ(HPDF_EncryptDict_GetAttr(document_.document->encrypt_dict)->mode, HPDF_ENCRYPT_R2);
}

TEST_F(EncryptionMode, KeyLengthsOutOfRangeAreRefusedAndChangeNothing) {
  Call<engine::AddPage>(document_.document);
  ASSERT_EQ(Call<HPDF_SetPassword>(document_.document, "owner", "user"), HPDF_OK);
  const HPDF_PDFVer version = document_.document->pdf_version;
  for (const unsigned keyLength : {1U, 4U, 17U, 128U, 0xFFFFFFFFU}) {
    EXPECT_EQ(Set(3, keyLength), HPDF_STATUS{HPDF_INVALID_ENCRYPT_KEY_LEN}) << keyLength;
    EXPECT_THAT(document_.failures, ElementsAre(Failure{HPDF_INVALID_ENCRYPT_KEY_LEN, 0})) << keyLength;
    document_.failures.clear();
  }
  EXPECT_EQ(document_.document->pdf_version, version);
  EXPECT_THAT(document_.SaveToString(), HasSubstr("/R 2\n"));
}

TEST_F(EncryptionMode, RevisionTwoTakesAnyKeyLengthForItsFiveBytes) {
  ASSERT_EQ(Call<HPDF_SetPassword>(document_.document, "owner", "user"), HPDF_OK);
  for (const unsigned keyLength : {0U, 5U, 16U, 99U}) {
    EXPECT_EQ(Set(2, keyLength), HPDF_OK);
    EXPECT_EQ(HPDF_EncryptDict_GetAttr(document_.document->encrypt_dict)->key_len, 5U);
  }
  EXPECT_THAT(document_.TakeCodes(), IsEmpty());
}

TEST_F(EncryptionMode, RevisionThreeTakesFiveToSixteenBytesAndZeroForSixteen) {
  ASSERT_EQ(Call<HPDF_SetPassword>(document_.document, "owner", "user"), HPDF_OK);
  for (unsigned keyLength = 5; keyLength <= 16; ++keyLength) {
    EXPECT_EQ(Set(3, keyLength), HPDF_OK);
    EXPECT_EQ(HPDF_EncryptDict_GetAttr(document_.document->encrypt_dict)->key_len, keyLength);
  }
  EXPECT_EQ(Set(3, 0), HPDF_OK);
  EXPECT_EQ(HPDF_EncryptDict_GetAttr(document_.document->encrypt_dict)->key_len, 16U);
}

TEST_F(EncryptionMode, IsFixedForEachDocumentUntilItsOwnWritingEnds) {
  LibraryDocument other, third;
  auto first = std::make_unique<engine::FixedEncryption>(document_.document);
  auto second = std::make_unique<engine::FixedEncryption>(other.document);
  EXPECT_FALSE(engine::FixedEncryption::IsOn(third.document));
  first.reset();
  EXPECT_FALSE(engine::FixedEncryption::IsOn(document_.document));
  EXPECT_TRUE(engine::FixedEncryption::IsOn(other.document));
  EXPECT_EQ(Call<engine::SetPassword>(document_.document, "owner", "user"), HPDF_OK);
  EXPECT_EQ(Call<engine::SetPassword>(other.document, "owner", "user"), HPDF_STATUS{HPDF_INVALID_OPERATION});
  second.reset();
  EXPECT_EQ(Call<engine::SetPassword>(other.document, "owner", "user"), HPDF_OK);
}

}  // namespace
}  // namespace quillbar
