#include "Engine/ConversionError.h"

#include "Engine/FileName.h"
#include "Localization/NolfaL10n.h"

namespace nolfa {

namespace {

std::string conversionFailed(const std::string &sentence)
{
    return T("The conversion failed. ", "La conversion a échoué. ") + sentence;
}

std::string describe(GoogleDenial denial)
{
    switch (denial) {
    case GoogleDenial::privateDocument:
        return T("This document is private. Sign in with Google in Settings to convert it.",
            "Ce document est privé. Connectez-vous avec Google dans les Réglages pour le convertir.");
    case GoogleDenial::notFound:
        return T("That Google document doesn't exist, or the link is wrong. Check the link and try again.",
            "Ce document Google n’existe pas, ou le lien est incorrect. Vérifiez le lien et réessayez.");
    case GoogleDenial::signInRequired:
        return T("That Google document needs you to sign in. Sign in with Google in Settings, or share the document "
                 "with anyone who has the link.",
            "Ce document Google demande une connexion. Connectez-vous avec Google dans les Réglages, ou partagez le "
            "document avec toute personne disposant du lien.");
    case GoogleDenial::rateLimited:
        return T("Google is turning requests away right now. Wait a minute and try again.",
            "Google refuse les demandes pour le moment. Attendez une minute et réessayez.");
    }
    return {};
}

struct Describe {
    std::string operator()(const ConversionError::UnreadableInput &error) const
    {
        return T("Nolfa couldn't read " + FileName::display(error.input)
                + ". Check that the file is still there and is not damaged.",
            "Nolfa n’a pas pu lire " + FileName::display(error.input)
                + ". Vérifiez que le fichier est toujours là et qu’il n’est pas endommagé.");
    }
    std::string operator()(const ConversionError::UnsupportedPair &error) const
    {
        return T("Nolfa can't convert " + displayName(error.from) + " to " + displayName(error.to)
                + ". Choose another format for this file.",
            "Nolfa ne convertit pas " + displayName(error.from) + " en " + displayName(error.to)
                + ". Choisissez un autre format pour ce fichier.");
    }
    std::string operator()(const ConversionError::AppNotInstalled &error) const
    {
        return T(error.app + " is not installed. Install it from the App Store to convert this file.",
            error.app + " n’est pas installé. Installez-le depuis l’App Store pour convertir ce fichier.");
    }
    std::string operator()(const ConversionError::PermissionDenied &error) const
    {
        return T(
            "macOS refused permission for Nolfa to control " + error.app + ". Open Automation settings and allow it.",
            "macOS a refusé l’autorisation pour que Nolfa pilote " + error.app
                + ". Ouvrez les réglages d’Automatisation et autorisez-la.");
    }
    std::string operator()(const ConversionError::EngineFailure &error) const
    {
        return conversionFailed(error.sentence);
    }
    std::string operator()(const ConversionError::PasswordProtected &error) const
    {
        return T(FileName::display(error.input)
                + " is password-protected. Remove the password in the app that made it, then convert it again.",
            FileName::display(error.input)
                + " est protégé par un mot de passe. Retirez le mot de passe dans l’application qui l’a créé, puis "
                  "convertissez-le à nouveau.");
    }
    std::string operator()(const ConversionError::TimedOut &error) const
    {
        return T("The " + error.step + " step took too long and was stopped. Try again, or convert a smaller file.",
            "L’étape " + error.step
                + " a pris trop de temps et a été interrompue. Réessayez, ou convertissez un fichier plus petit.");
    }
    std::string operator()(const ConversionError::EmptyResult &error) const
    {
        return T("The " + displayName(error.from) + " to " + displayName(error.to)
                + " conversion produced nothing. Try again, and report it if it keeps happening.",
            "La conversion de " + displayName(error.from) + " en " + displayName(error.to)
                + " n’a rien produit. Réessayez, et signalez-le si cela se reproduit.");
    }
    std::string operator()(const ConversionError::ToolFailure &error) const { return conversionFailed(error.summary); }
    std::string operator()(const ConversionError::Network & /*error*/) const
    {
        return T("Nolfa couldn't reach the network. Check your connection and try again.",
            "Nolfa n’a pas pu accéder au réseau. Vérifiez votre connexion et réessayez.");
    }
    std::string operator()(const ConversionError::GoogleAccessDenied &error) const { return describe(error.denial); }
    std::string operator()(const ConversionError::Cancelled & /*error*/) const
    {
        return T("The conversion was cancelled. Convert the file again whenever you're ready.",
            "La conversion a été annulée. Reconvertissez le fichier quand vous le souhaitez.");
    }
};

} // namespace

ConversionError::ConversionError(Case value)
    : m_value(std::move(value))
{
}

ConversionError ConversionError::unreadableInput(std::filesystem::path input)
{
    return ConversionError(UnreadableInput{std::move(input)});
}

ConversionError ConversionError::unsupportedPair(DocumentFormat from, DocumentFormat to)
{
    return ConversionError(UnsupportedPair{from, to});
}

ConversionError ConversionError::appNotInstalled(std::string app)
{
    return ConversionError(AppNotInstalled{std::move(app)});
}

ConversionError ConversionError::permissionDenied(std::string app)
{
    return ConversionError(PermissionDenied{std::move(app)});
}

ConversionError ConversionError::engineFailure(std::string sentence)
{
    return ConversionError(EngineFailure{std::move(sentence)});
}

ConversionError ConversionError::passwordProtected(std::filesystem::path input)
{
    return ConversionError(PasswordProtected{std::move(input)});
}

ConversionError ConversionError::timedOut(std::string step)
{
    return ConversionError(TimedOut{std::move(step)});
}

ConversionError ConversionError::emptyResult(DocumentFormat from, DocumentFormat to)
{
    return ConversionError(EmptyResult{from, to});
}

ConversionError ConversionError::toolFailure(std::string tool, std::string summary, std::string detail)
{
    return ConversionError(ToolFailure{std::move(tool), std::move(summary), std::move(detail)});
}

ConversionError ConversionError::network(std::string description)
{
    return ConversionError(Network{std::move(description)});
}

ConversionError ConversionError::googleAccessDenied(GoogleDenial denial)
{
    return ConversionError(GoogleAccessDenied{denial});
}

ConversionError ConversionError::cancelled()
{
    return ConversionError(Cancelled{});
}

std::string ConversionError::errorDescription() const
{
    return std::visit(Describe(), m_value);
}

} // namespace nolfa
