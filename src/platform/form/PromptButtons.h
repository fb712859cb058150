#pragma once

class QApplication;

namespace platform {

/// Buttons act when the key of their letter is pressed. The toolkit lets them look pressed for 100 ms first,
/// and what is typed meanwhile goes to the field that the button is about to leave.
void makeButtonsPrompt(QApplication& application);

} // namespace platform
