// The image commands of the sprites editor: adding sprites from files, replacing, saving and cropping
// images, and the group commands.

#include "QSpritesEditor.h"

void QSpritesEditor::add() {}
void QSpritesEditor::openImg() {}
void QSpritesEditor::saveImg() {}
void QSpritesEditor::saveImgAlign() {}
void QSpritesEditor::crop() {}
void QSpritesEditor::delGroup() {}
void QSpritesEditor::renameGroup() {}
void QSpritesEditor::alignTools() {}
void QSpritesEditor::splitRGB() {}
void QSpritesEditor::fileExport() {}
void QSpritesEditor::projImport() {}
void QSpritesEditor::sheetImport() {}
void QSpritesEditor::setSprite(QImage& image)
{
    replaceImage(image);
}
void QSpritesEditor::changeSprite(QImage& image)
{
    replaceImage(image);
}
bool QSpritesEditor::replaceImage(QImage)
{
    return false;
}
