// Draws the pictures that are shipped beside the program or compiled into it. Run by the build.
#include "colorMapPictures.h"
#include "effectIconPictures.h"
#include "glyphPictures.h"
#include "homePictures.h"
#include "matrixPictures.h"
#include "productPictures.h"
#include "programPictures.h"

#include <QCoreApplication>
#include <QDir>
#include <cstdio>

int main(int argc, char** argv)
{
    const QCoreApplication app(argc, argv); // for the picture formats, which are plug-ins
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() != 6) {
        std::fputs("usage: picture-generator CONFIG_FOLDER PROGRAM_FOLDER COMPILED_IN_FOLDER ICON_THEME "
                   "WINDOWS_ICON\n",
                   stderr);
        return 2;
    }
    const QString maps = arguments.at(2) + QLatin1String("/effects/colorful");
    const QString loop = arguments.at(2) + QLatin1String("/effects/graphics");
    const QString images = arguments.at(2) + QLatin1String("/images");
    const QString& compiledIn = arguments.at(3);
    for (const QString& folder :
         {maps, loop, images + QLatin1String("/products"), images + QLatin1String("/productIcons"),
          images + QLatin1String("/icons"), compiledIn + QLatin1String("/icons")})
        QDir().mkpath(folder);
    if (!writeColorMapPictures(maps) || !writeMatrixPictures(loop) || !writeGlyphPictures(compiledIn) ||
        !writeProgramPictures(images) || !writeHomePictures(images) ||
        !writeEffectIcons(images, compiledIn) || !writeThemeIcons(arguments.at(4)) ||
        !writeWindowsIcon(arguments.at(5)) ||
        !writeProductPictures(arguments.at(1), images, compiledIn + QLatin1String("/Lv0127Icon.jpg"))) {
        std::fputs("picture-generator: a file could not be read or written\n", stderr);
        return 1;
    }
    return 0;
}
