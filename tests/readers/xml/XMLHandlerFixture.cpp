#include "tests/readers/xml/XMLHandlerFixture.h"

namespace intake {

XMLHandlerFixture::XMLHandlerFixture() {
    logger_.setLevel(-1);
    request_.filename = "fixtures.xml";
    request_.xpath = "/a/b";
    request_.namespaces = "xmlns:f='urn:f'";
    request_.key = "title";
    request_.table = 'T';
    request_.numRows = 1000000;
}

}  // namespace intake
