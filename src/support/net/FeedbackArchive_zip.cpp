#include "support/net/FeedbackArchive.h"

#include <zip.h>

// A module of its own, because the archive library brings others along that the program would carry all day.

namespace {

/// What happens to one zip_close().
struct Watch
{
    const ArchiveProgress& progress;
    bool isAsked = false; // to end
};

void tell(zip_t*, double share, void* watch)
{
    auto* told = static_cast<Watch*>(watch);
    if (!told->progress(int(share * 100)))
        told->isAsked = true;
}

int isAsked(zip_t*, void* watch)
{
    return static_cast<Watch*>(watch)->isAsked ? 1 : 0;
}

bool add(zip_t* archive, const FeedbackFile& file)
{
    zip_source_t* source = zip_source_buffer(archive, file.bytes.constData(), size_t(file.bytes.size()), 0);
    if (source == nullptr)
        return false;
    if (zip_file_add(archive, file.name.toUtf8().constData(), source, ZIP_FL_ENC_UTF_8) >= 0)
        return true;
    zip_source_free(source);
    return false;
}

/// Writes the archive and frees it. False on failure and when asked to end.
bool closed(zip_t* archive, const std::vector<FeedbackFile>& files, Watch& watch, QString* error)
{
    bool isWhole = true;
    for (const FeedbackFile& file : files)
        isWhole = isWhole && add(archive, file);
    zip_register_progress_callback_with_state(archive, 0.01, tell, nullptr, &watch);
    zip_register_cancel_callback_with_state(archive, isAsked, nullptr, &watch);
    if (isWhole && zip_close(archive) == 0)
        return true;
    if (!watch.isAsked)
        *error = QString::fromUtf8(zip_strerror(archive));
    zip_discard(archive);
    return false;
}

QByteArray contents(zip_source_t* source)
{
    zip_stat_t stat;
    zip_stat_init(&stat);
    if (zip_source_stat(source, &stat) != 0 || zip_source_open(source) != 0)
        return {};
    QByteArray bytes(int(stat.size), Qt::Uninitialized);
    const zip_int64_t size = zip_source_read(source, bytes.data(), stat.size);
    zip_source_close(source);
    return size == zip_int64_t(stat.size) ? bytes : QByteArray();
}

} // namespace

/// What zipped() does; the only way into this module. A program that runs through an upgrade meets the later
/// version's: other parameters need another name.
extern "C" Q_DECL_EXPORT void lumivarZip(const std::vector<FeedbackFile>& files,
                                         const ArchiveProgress& progress, QString& error, QByteArray& bytes)
{
    zip_error_t zipError;
    zip_error_init(&zipError);
    // In memory: it is a megabyte or two, and the disk has its say in one place only.
    if (zip_source_t* target = zip_source_buffer_create(nullptr, 0, 0, &zipError)) {
        zip_source_keep(target); // the archive takes one reference with it
        Watch watch{progress};
        if (zip_t* archive = zip_open_from_source(target, ZIP_TRUNCATE, &zipError)) {
            if (closed(archive, files, watch, &error))
                bytes = contents(target);
        } else {
            zip_source_free(target);
        }
        zip_source_free(target);
        if (bytes.isEmpty() && error.isEmpty() && !watch.isAsked)
            error = QString::fromUtf8(zip_error_strerror(&zipError));
    }
    zip_error_fini(&zipError);
}
