#include "platform/windows/msxml/MsxmlRequest.h"

#include "platform/windows/com/BasicString.h"
#include "platform/windows/com/Variant.h"
#include "platform/windows/com/com_error.h"
#include "platform/windows/msxml/MsxmlDocument.h"

namespace intake {

namespace {

void setArgument(Variant& argument, const std::string* text) {
    if (text == nullptr) {
        argument.setMissing();
    } else {
        argument.setText(*text);
    }
}

}  // namespace

void MsxmlRequest::open(const std::string& url, const std::string* user,
                        const std::string* password) {
    Variant asynchronous;
    asynchronous.setBool(false);
    Variant userArgument;
    setArgument(userArgument, user);
    Variant passwordArgument;
    setArgument(passwordArgument, password);
    checkCom(request_->open(BasicString("GET").get(), BasicString(url).get(), asynchronous.get(),
                            userArgument.get(), passwordArgument.get()));
}

void MsxmlRequest::setHeader(const std::string& name, const std::string& value) {
    checkCom(request_->setRequestHeader(BasicString(name).get(), BasicString(value).get()));
}

void MsxmlRequest::send() {
    Variant body;
    body.setMissing();
    checkCom(request_->send(body.get()));
}

void MsxmlRequest::loadInto(XmlDocument& document) {
    BasicString body;
    checkCom(request_->get_responseText(body.out()));
    static_cast<MsxmlDocument&>(document).load(body);
}

}  // namespace intake
