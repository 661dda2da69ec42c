#pragma once

// The recognisers of every kind of line, registered once for the process before any document exists:
// the definitions family, the animations family, the commands family, then name comments and unknown
// sections. The earliest registered of several that fit a line wins, so unknown sections only take
// the headers that nothing else wants. Registering again while registered does nothing.
void registerTextElements();
// Takes the recognisers back in reverse order of registering and deletes every pooled element; the
// end of the application, once no document is left.
void unregisterTextElements();
