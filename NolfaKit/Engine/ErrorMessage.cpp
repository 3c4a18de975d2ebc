#include "Engine/ErrorMessage.h"

#include "Engine/ConversionError.h"
#include "Engine/FileName.h"
#include "Localization/NolfaL10n.h"
#include "Platform/CancellationError.h"

#include <filesystem>
#include <new>

namespace nolfa::ErrorMessage {

namespace {

std::string describe(const std::filesystem::filesystem_error &error)
{
    const std::string name = FileName::display(error.path1());
    const std::error_code code = error.code();
    if (code == std::errc::no_space_on_device)
        return T("The disk is full. Free some space and try again.",
            "Le disque est plein. Libérez de l’espace et réessayez.");
    if (code == std::errc::permission_denied || code == std::errc::operation_not_permitted
        || code == std::errc::read_only_file_system)
        return T("Nolfa isn't allowed to write to " + name + ". Choose another folder and try again.",
            "Nolfa n’a pas le droit d’écrire dans " + name + ". Choisissez un autre dossier et réessayez.");
    return T("Nolfa couldn't use " + name + ": " + code.message() + ".",
        "Nolfa n’a pas pu utiliser " + name + " : " + code.message() + ".");
}

} // namespace

std::string sentence(const std::exception &error)
{
    if (const auto *conversion = dynamic_cast<const ConversionError *>(&error))
        return conversion->errorDescription();
    if (dynamic_cast<const CancellationError *>(&error) != nullptr)
        return ConversionError::cancelled().errorDescription();
    if (const auto *file = dynamic_cast<const std::filesystem::filesystem_error *>(&error))
        return describe(*file);
    if (dynamic_cast<const std::bad_alloc *>(&error) != nullptr)
        return T("There is not enough memory for this file. Close other programs, or convert a smaller file.",
            "La mémoire ne suffit pas pour ce fichier. Fermez d’autres programmes, ou convertissez un fichier plus "
            "petit.");
    return ConversionError::engineFailure(error.what()).errorDescription();
}

} // namespace nolfa::ErrorMessage
