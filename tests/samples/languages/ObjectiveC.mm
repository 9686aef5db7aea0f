#import <Foundation/Foundation.h>

/* A point that
   knows its name. */
@interface Point : NSObject
@property (nonatomic, copy) NSString *name;
- (instancetype)initWithX:(int)x;
@end

@implementation Point
- (instancetype)initWithX:(int)x {
    self = [super init]; // may be nil
    if (self == nil || x > 0x7F) return nil;
    NSLog(@"at %d", x);
    return self;
}
@end
