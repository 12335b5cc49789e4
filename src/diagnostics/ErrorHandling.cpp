// SPDX-License-Identifier: MIT
#include "diagnostics/ErrorHandling.h"

#include <array>
#include <utility>

#include "platform/Host.h"

namespace {

// The numbers that the program raises, and those that its host's facilities may.
constexpr std::array<std::pair<int, std::string_view>, 18> errorTexts{{
    {5, "Argument ou appel de procédure incorrect"},
    {6, "Dépassement de capacité"},
    {7, "Mémoire insuffisante"},
    {9, "L'indice n'appartient pas à la sélection"},
    {11, "Division par zéro"},
    {13, "Incompatibilité de type"},
    {51, "Erreur interne"},
    {52, "Nom ou numéro de fichier incorrect"},
    {53, "Fichier introuvable"},
    {57, "Erreur d'entrée/sortie de périphérique"},
    {61, "Disque plein"},
    {70, "Permission refusée"},
    {75, "Erreur d'accès chemin/fichier"},
    {76, "Chemin d'accès introuvable"},
    {91, "Variable objet ou variable de bloc With non définie"},
    {ErrorNumber::FileFormat, "Format de fichier incorrect"},
    {482, "Erreur d'impression"},
    {ErrorNumber::ObjectNotSet, "L'objet associé à la cellule n'a pas été créé."},
}};

std::string ReportText(std::string_view location, int errorNumber) {
    std::string text = "Error Nr " + std::to_string(errorNumber) + " : ";
    text.append(ErrorText(errorNumber)).append("\r\n\r\nModule : ");
    const auto stop = location.find('.');
    if (stop == std::string_view::npos) return text.append(location);
    text.append(location.substr(0, stop)).append("\r\n");
    const std::string_view routine = location.substr(stop + 1);
    const auto underscore = routine.find('_');
    if (underscore == std::string_view::npos) return text.append("Function : ").append(routine);
    text.append("Object : ").append(routine.substr(0, underscore));
    return text.append("\r\nEvent : ").append(routine.substr(underscore + 1));
}

}  // namespace

RuntimeError::RuntimeError(int number)
    : std::runtime_error(std::string(ErrorText(number))), number_(number) {}

std::string_view ErrorText(int errorNumber) {
    for (const auto& [number, text] : errorTexts) {
        if (number == errorNumber) return text;
    }
    return {};
}

void ShowError(std::string_view location, int errorNumber) noexcept {
    try {
        const platform::Host& host = platform::TheHost();
        host.pointer->Shape(platform::PointerShape::Default);
        host.messages->Show(ReportText(location, errorNumber), platform::MessageStyle::Stop);
    } catch (...) {
        // A report that cannot be shown has nowhere to go; the failed routine ends all the same.
        return;
    }
}

namespace diagnostics {

int CurrentErrorNumber() noexcept {
    try {
        throw;
    } catch (const RuntimeError& error) {
        return error.Number();
    } catch (const std::bad_alloc&) {
        return ErrorNumber::OutOfMemory;
    } catch (...) {
        return ErrorNumber::Internal;
    }
}

void Report(std::string_view object, std::string_view routine, int errorNumber) noexcept {
    try {
        ShowError(std::string(object).append(".").append(routine), errorNumber);
    } catch (...) {
        ShowError(routine, errorNumber);
    }
}

}  // namespace diagnostics
