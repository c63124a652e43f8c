#include "platform/views/PictureResource.h"

#include "platform/ports/Pictures.h"
#include "platform/ports/Platform.h"

namespace orv::platform {

ImagePtr PictureResource::image() const
{
    if (!isRead_) {
        image_ = Platform::current().pictures().picture(pathForImageResource(name_));
        isRead_ = true;
    }
    return image_;
}

} // namespace orv::platform
