#pragma once
#include <QString>
#include <vector>

namespace platform {
class RegistryStore;
}

/// What the guide for beginners tells.
namespace modHelpStepByStep {

struct Step {
    QString caption;
    /// Paragraphs as HTML.
    QString text;
    /// A picture of the manual.
    QString picture;
    /// Name and caption of the button that leads to the screen; the first step has none.
    QString button;
    QString buttonText;
    QString screen;
};

/// The nine steps.
const std::vector<Step>& steps();

/// Whether the guide is to show at the start: unless it was switched off.
bool ShowsAtStart(platform::RegistryStore& registry);
void SetShowsAtStart(platform::RegistryStore& registry, bool shows);

} // namespace modHelpStepByStep
