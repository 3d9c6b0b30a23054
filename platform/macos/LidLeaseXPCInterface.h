#pragma once

#import <Foundation/Foundation.h>

namespace wakeloft::LidLeaseXPCInterface {

// The interface description both ends use: the app as its connection's
// remote-object interface, the helper as each connection's exported one.
NSXPCInterface* make();

}  // namespace wakeloft::LidLeaseXPCInterface
