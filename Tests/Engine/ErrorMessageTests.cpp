#include "Engine/ErrorMessage.h"

#include "Engine/ConversionError.h"
#include "Platform/CancellationError.h"
#include "Support/Scopes.h"

#include <gtest/gtest.h>
#include <new>

using namespace nolfa;
using namespace nolfa::testing;
namespace fs = std::filesystem;

TEST(ErrorMessage, conversionErrorsSpeakForThemselves)
{
    const LanguageScope language(NolfaLanguage::fr);
    const ConversionError error = ConversionError::timedOut("unzip");
    EXPECT_EQ(ErrorMessage::sentence(error), error.errorDescription());
    EXPECT_EQ(ErrorMessage::sentence(CancellationError()), ConversionError::cancelled().errorDescription());
}

TEST(ErrorMessage, fileSystemErrorsBecomeSentencesInBothLanguages)
{
    const auto error
        = [](std::errc code) { return fs::filesystem_error("mkdir", "/tmp/é", std::make_error_code(code)); };
    const LanguageScope language(NolfaLanguage::en);
    EXPECT_EQ(ErrorMessage::sentence(error(std::errc::no_space_on_device)),
        "The disk is full. Free some space and try again.");
    EXPECT_EQ(ErrorMessage::sentence(error(std::errc::read_only_file_system)),
        "Nolfa isn't allowed to write to é. Choose another folder and try again.");
    EXPECT_EQ(ErrorMessage::sentence(error(std::errc::too_many_links)), "Nolfa couldn't use é: Too many links.");
    NolfaL10n::setCurrent(NolfaLanguage::fr);
    EXPECT_EQ(ErrorMessage::sentence(error(std::errc::no_space_on_device)),
        "Le disque est plein. Libérez de l’espace et réessayez.");
    EXPECT_EQ(ErrorMessage::sentence(error(std::errc::permission_denied)),
        "Nolfa n’a pas le droit d’écrire dans é. Choisissez un autre dossier et réessayez.");
}

TEST(ErrorMessage, whateverElseIsAnEngineFailure)
{
    const LanguageScope language(NolfaLanguage::en);
    EXPECT_EQ(ErrorMessage::sentence(std::runtime_error("Broken.")), "The conversion failed. Broken.");
    EXPECT_EQ(ErrorMessage::sentence(std::bad_alloc()),
        "There is not enough memory for this file. Close other programs, or convert a smaller file.");
}
