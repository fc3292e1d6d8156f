#include "PictureWork.h"

#include "LongWork.h"

PictureWork::PictureWork(QObject* editor) : m_editor(editor) {
    connect(editor, SIGNAL(pictureProgress()), this, SLOT(goOn()));
}

void PictureWork::goOn() {
    if (!LongWork::step()) {
        QMetaObject::invokeMethod(m_editor, "giveUpPicture");
    }
}
