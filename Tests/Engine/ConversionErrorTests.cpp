#include "Engine/ConversionError.h"

#include "Support/Expect.h"
#include "Support/Scopes.h"

#include <gtest/gtest.h>

using namespace nolfa;
using namespace nolfa::testing;

namespace {

struct Sentence {
    ConversionError error;
    const char *english;
    const char *french;
};

// clang-format off
const std::vector<Sentence> sentences {
    {ConversionError::unreadableInput("/a/été.docx"),
        "Nolfa couldn't read été.docx. Check that the file is still there and is not damaged.",
        "Nolfa n’a pas pu lire été.docx. Vérifiez que le fichier est toujours là et qu’il n’est pas endommagé."},
    {ConversionError::unsupportedPair(DocumentFormat::pptx, DocumentFormat::gdoc),
        "Nolfa can't convert PowerPoint to Google Doc. Choose another format for this file.",
        "Nolfa ne convertit pas PowerPoint en Google Doc. Choisissez un autre format pour ce fichier."},
    {ConversionError::appNotInstalled("Pages"),
        "Pages is not installed. Install it from the App Store to convert this file.",
        "Pages n’est pas installé. Installez-le depuis l’App Store pour convertir ce fichier."},
    {ConversionError::permissionDenied("Keynote"),
        "macOS refused permission for Nolfa to control Keynote. Open Automation settings and allow it.",
        "macOS a refusé l’autorisation pour que Nolfa pilote Keynote. Ouvrez les réglages d’Automatisation et autorisez-la."},
    {ConversionError::engineFailure("It broke."),
        "The conversion failed. It broke.",
        "La conversion a échoué. It broke."},
    {ConversionError::passwordProtected("/a/été.docx"),
        "été.docx is password-protected. Remove the password in the app that made it, then convert it again.",
        "été.docx est protégé par un mot de passe. Retirez le mot de passe dans l’application qui l’a créé, puis convertissez-le à nouveau."},
    {ConversionError::timedOut("pandoc"),
        "The pandoc step took too long and was stopped. Try again, or convert a smaller file.",
        "L’étape pandoc a pris trop de temps et a été interrompue. Réessayez, ou convertissez un fichier plus petit."},
    {ConversionError::emptyResult(DocumentFormat::pdf, DocumentFormat::markdown),
        "The PDF to Markdown conversion produced nothing. Try again, and report it if it keeps happening.",
        "La conversion de PDF en Markdown n’a rien produit. Réessayez, et signalez-le si cela se reproduit."},
    {ConversionError::toolFailure("pandoc", "It broke.", "raw"),
        "The conversion failed. It broke.",
        "La conversion a échoué. It broke."},
    {ConversionError::network("socket 3"),
        "Nolfa couldn't reach the network. Check your connection and try again.",
        "Nolfa n’a pas pu accéder au réseau. Vérifiez votre connexion et réessayez."},
    {ConversionError::googleAccessDenied(GoogleDenial::privateDocument),
        "This document is private. Sign in with Google in Settings to convert it.",
        "Ce document est privé. Connectez-vous avec Google dans les Réglages pour le convertir."},
    {ConversionError::googleAccessDenied(GoogleDenial::notFound),
        "That Google document doesn't exist, or the link is wrong. Check the link and try again.",
        "Ce document Google n’existe pas, ou le lien est incorrect. Vérifiez le lien et réessayez."},
    {ConversionError::googleAccessDenied(GoogleDenial::signInRequired),
        "That Google document needs you to sign in. Sign in with Google in Settings, or share the document with anyone who has the link.",
        "Ce document Google demande une connexion. Connectez-vous avec Google dans les Réglages, ou partagez le document avec toute personne disposant du lien."},
    {ConversionError::googleAccessDenied(GoogleDenial::rateLimited),
        "Google is turning requests away right now. Wait a minute and try again.",
        "Google refuse les demandes pour le moment. Attendez une minute et réessayez."},
    {ConversionError::cancelled(),
        "The conversion was cancelled. Convert the file again whenever you're ready.",
        "La conversion a été annulée. Reconvertissez le fichier quand vous le souhaitez."},
};
// clang-format on

} // namespace

TEST(ConversionError, everyCaseHasItsSentenceInBothLanguages)
{
    for (const Sentence &sentence : sentences) {
        const LanguageScope english(NolfaLanguage::en);
        EXPECT_EQ(sentence.error.errorDescription(), sentence.english);
        // The same error, shown after the language changed.
        NolfaL10n::setCurrent(NolfaLanguage::fr);
        EXPECT_EQ(sentence.error.errorDescription(), sentence.french);
    }
}

TEST(ConversionError, anEmptySummaryLeavesItsBlank)
{
    const LanguageScope english(NolfaLanguage::en);
    EXPECT_EQ(ConversionError::toolFailure("pandoc", "", "detail").errorDescription(), "The conversion failed. ");
    EXPECT_EQ(ConversionError::engineFailure("").errorDescription(), "The conversion failed. ");
}

TEST(ConversionError, theTechnicalPayloadsStayUnseenButKept)
{
    const ConversionError tool = ConversionError::toolFailure("pandoc", "Sentence.", "raw text");
    EXPECT_EQ(tool.errorDescription().find("raw text"), std::string::npos);
    EXPECT_EQ(tool.as<ConversionError::ToolFailure>()->tool, "pandoc");
    EXPECT_EQ(tool.as<ConversionError::ToolFailure>()->detail, "raw text");
    EXPECT_EQ(ConversionError::network("secret").errorDescription().find("secret"), std::string::npos);
}

TEST(ConversionError, isEqualCaseByCaseAndPayloadByPayload)
{
    EXPECT_EQ(ConversionError::timedOut("a"), ConversionError::timedOut("a"));
    EXPECT_NE(ConversionError::timedOut("a"), ConversionError::timedOut("b"));
    EXPECT_NE(ConversionError::engineFailure("a"), ConversionError::timedOut("a"));
    EXPECT_NE(ConversionError::toolFailure("a", "b", "c"), ConversionError::toolFailure("a", "b", "d"));
    EXPECT_EQ(ConversionError::cancelled(), ConversionError::cancelled());
}

TEST(ConversionError, namesThatAreNoUTF8AreShownRepaired)
{
    const LanguageScope english(NolfaLanguage::en);
    EXPECT_EQ(ConversionError::unreadableInput("/a/r\xE9sum\xE9.docx").errorDescription(),
        "Nolfa couldn't read r\uFFFDsum\uFFFD.docx. Check that the file is still there and is not damaged.");
}
