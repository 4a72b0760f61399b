#include "platform/dotmac/DiskSession.h"

#include "platform/dotmac/UploadTransaction.h"

namespace clipwave {

WebDAVAnswer DiskSession::ask(const WebDAVRequest& request) {
  WebDAVAnswer answer = server_->send(request, options_.answerTimeout);
  const bool isAnswer = request.method == "PROPFIND" && answer.isMissing();
  if (answer.failure && !isAnswer) services_.log.write(failureLine(request, *answer.failure));
  return answer;
}

bool DiskSession::fileExistsAtPath(std::string_view path) {
  return !ask(WebDAVRequest::question(std::string(path))).isMissing();
}

bool DiskSession::fileExistsAtPath(std::string_view path, bool& isDirectory) {
  const WebDAVAnswer answer = ask(WebDAVRequest::question(std::string(path)));
  if (answer.failure) return false;
  isDirectory = answer.isFolder;
  return true;
}

// Some servers also answer that they made a folder which was there before; who asks has looked.
bool DiskSession::createDirectoryAtPath(std::string_view path) {
  return !ask({"MKCOL", std::string(path), true}).failure;
}

std::shared_ptr<DMTransaction> DiskSession::putLocalFileAtPath(std::string_view localPath,
                                                               std::string_view toPath) {
  const auto upload =
      std::make_shared<UploadTransaction>(services_, options_, server_, delegate_, localPath, toPath);
  upload->start();
  return upload;
}

}  // namespace clipwave
