#include "comment_dialog_model.h"

#include <cstring>
#include <memory>

#include "comment/comment_limits.h"
#include "comment/comment_reader.h"
#include "platform/platform.h"

namespace vv {

CommentDialogState PrepareCommentDialog(std::u16string_view fileNames, std::u16string_view settingsPath,
                                        std::u16string_view formats) {
    CommentDialogState state;
    state.settingsPath = std::u16string(settingsPath.substr(0, comment::kBatchPathChars));
    state.settings = comment::ReadCommentSettings(state.settingsPath);
    state.fileNames = std::u16string(fileNames);
    state.png = formats.find(u";PNG;") != std::u16string_view::npos;

    const size_t bar = fileNames.find(u'|');
    state.batch = bar != std::u16string_view::npos;
    state.workingFile = std::u16string(fileNames.substr(0, bar));
    state.caption = (state.batch ? u"First file: " : u"File: ") + state.workingFile;
    if (state.workingFile.empty()) return state;
    state.readOnly = platform::IsReadOnly(state.workingFile);

    std::unique_ptr<char[]> bytes(new char[comment::kOldCommentBytes]());
    if (state.png) comment::ReadPngComment(state.workingFile, bytes.get(), comment::kOldCommentBytes, 0);
    else comment::ReadJpegComments(state.workingFile, bytes.get(), comment::kOldCommentBytes);
    state.oldBytes.assign(bytes.get(), strnlen(bytes.get(), comment::kOldCommentBytes));

    state.oldText = state.png ? platform::AnsiToUtf16(state.oldBytes)
                              : comment::ConvertCommentText(state.oldBytes, state.settings.conversion);
    if (state.oldText.size() >= comment::kCommentChars) state.oldText.resize(comment::kCommentChars - 1);
    if (state.settings.clearSpaces) comment::TrimBlanks(state.oldText);
    return state;
}

std::u16string ChooseConversion(CommentDialogState& state, int conversion) {
    state.settings.conversion = conversion;
    if (!state.settingsPath.empty()) comment::WriteConversionSetting(state.settingsPath, conversion);
    return comment::ConvertCommentText(state.oldBytes, conversion);
}

void AcceptCommentEdit(CommentDialogState& state, std::u16string_view text, bool keepOrgDate, bool clearSpaces,
                       bool append) {
    state.newText = std::u16string(text.substr(0, comment::kCommentChars - 1));
    state.settings.keepOrgDate = keepOrgDate;
    state.settings.clearSpaces = clearSpaces;
    state.settings.append = append;
    if (!state.settingsPath.empty()) comment::WriteOptionSettings(state.settingsPath, state.settings);
}

int RunCommentWrite(const CommentDialogState& state, const comment::CommentErrorSink& onError) {
    comment::CommentJob job;
    job.text = state.newText;
    job.settingsPath = state.settingsPath;
    job.settings = state.settings;
    if (!state.batch) return comment::WriteCommentToFile(state.workingFile, job, onError);
    return comment::WriteCommentBatch(state.fileNames, job, onError).failed == 0 ? 1 : 0;
}

}  // namespace vv
