#include "Platform/Locale.h"

#include "Support/Scopes.h"

#include <gtest/gtest.h>

using namespace nolfa;
using namespace nolfa::testing;

TEST(Locale, takesNamesApart)
{
    EXPECT_EQ(Locale::fromName("fr_CA.UTF-8@euro"), (Locale{"fr", "CA"}));
    EXPECT_EQ(Locale::fromName("fr"), (Locale{"fr", ""}));
    EXPECT_EQ(Locale::fromName("EN-gb"), (Locale{"en", "GB"}));
    EXPECT_EQ(Locale::fromName("zh_Hant_TW"), (Locale{"zh", "TW"}));
    EXPECT_EQ(Locale::fromName("es_419"), (Locale{"es", "419"}));
    EXPECT_EQ(Locale::fromName("ast_ES.UTF-8"), (Locale{"ast", "ES"}));
    EXPECT_EQ(Locale::fromName("fr_"), (Locale{"fr", ""}));
}

TEST(Locale, namesWithoutALanguageSayNothing)
{
    for (const char *name : {"", "C", "C.UTF-8", "POSIX", ".UTF-8", "_FR"})
        EXPECT_EQ(Locale::fromName(name), Locale()) << name;
}

TEST(Locale, theFirstVariableThatIsSetDecides)
{
    const EnvironmentScope all("LC_ALL", "");
    const EnvironmentScope messages("LC_MESSAGES", "fr_BE.UTF-8");
    const EnvironmentScope lang("LANG", "en_US.UTF-8");
    EXPECT_EQ(Locale::current(), (Locale{"fr", "BE"}));
    const EnvironmentScope over("LC_ALL", "de_DE");
    EXPECT_EQ(Locale::current(), (Locale{"de", "DE"}));
}
