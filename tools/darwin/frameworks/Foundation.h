#pragma once

#include <CoreGraphics/CoreGraphics.h>
#import <objc/NSObject.h>

// What the library uses of Foundation, from its documentation.

#define OND_INNER_POINTER __attribute__((objc_returns_inner_pointer))

#pragma clang assume_nonnull begin

@class NSDictionary<KeyType, ObjectType>;
typedef NSString *NSErrorDomain;
typedef double NSTimeInterval;
typedef CGSize NSSize;
typedef CGRect NSRect;

typedef struct
{
    unsigned long state;
    id __unsafe_unretained _Nullable *_Nullable itemsPtr;
    unsigned long *_Nullable mutationsPtr;
    unsigned long extra[5];
} NSFastEnumerationState;

@protocol NSFastEnumeration
- (NSUInteger)countByEnumeratingWithState:(NSFastEnumerationState *)state
                                  objects:(id __unsafe_unretained _Nullable[_Nonnull])buffer
                                    count:(NSUInteger)len;
@end

@protocol NSCopying
- (id)copyWithZone:(nullable struct _NSZone *)zone;
@end

typedef NSUInteger NSStringEncoding;
enum : NSStringEncoding { NSISOLatin1StringEncoding = 5 };

@interface NSString : NSObject <NSCopying>
@property (readonly) NSUInteger length;
@property (nullable, readonly) const char *UTF8String OND_INNER_POINTER;
@property (readonly) const char *fileSystemRepresentation OND_INNER_POINTER;
- (BOOL)isEqualToString:(NSString *)aString;
+ (nullable instancetype)stringWithUTF8String:(const char *)nullTerminatedCString;
+ (nullable instancetype)stringWithCString:(const char *)cString encoding:(NSStringEncoding)enc;
@end

@interface NSNumber : NSObject
+ (NSNumber *)numberWithInt:(int)value;
+ (NSNumber *)numberWithLong:(long)value;
+ (NSNumber *)numberWithInteger:(NSInteger)value;
@end

@interface NSArray<__covariant ObjectType> : NSObject <NSFastEnumeration>
@property (nullable, nonatomic, readonly) ObjectType firstObject API_AVAILABLE(macos(10.6));
+ (instancetype)arrayWithObjects:(const ObjectType _Nonnull[_Nullable])objects count:(NSUInteger)cnt;
@end

@interface NSMutableArray<ObjectType> : NSArray <ObjectType>
+ (instancetype)array;
- (void)addObject:(ObjectType)anObject;
@end

@interface NSDictionary<__covariant KeyType, __covariant ObjectType> : NSObject <NSFastEnumeration>
- (nullable ObjectType)objectForKey:(KeyType)aKey;
+ (instancetype)dictionaryWithObjects:(const ObjectType _Nonnull[_Nullable])objects
                              forKeys:(const KeyType<NSCopying> _Nonnull[_Nullable])keys
                                count:(NSUInteger)cnt;
+ (nullable NSDictionary<KeyType, ObjectType> *)dictionaryWithContentsOfFile:(NSString *)path;
@end

@interface NSData : NSObject
@property (readonly) NSUInteger length;
@property (nullable, readonly) const void *bytes OND_INNER_POINTER;
+ (instancetype)dataWithBytes:(nullable const void *)bytes length:(NSUInteger)length;
@end

@interface NSError : NSObject
@property (readonly, copy) NSString *description;
@end

typedef NSUInteger NSURLBookmarkCreationOptions;
typedef NSUInteger NSURLBookmarkResolutionOptions;
typedef NSString *NSURLResourceKey;

@interface NSURL : NSObject
@property (nullable, readonly, copy) NSString *path;
+ (nullable instancetype)URLWithString:(NSString *)URLString;
+ (NSURL *)fileURLWithPath:(NSString *)path;
- (nullable NSData *)bookmarkDataWithOptions:(NSURLBookmarkCreationOptions)options
              includingResourceValuesForKeys:(nullable NSArray<NSURLResourceKey> *)keys
                               relativeToURL:(nullable NSURL *)relativeURL
                                       error:(NSError *_Nullable *_Nullable)error API_AVAILABLE(macos(10.6));
+ (nullable instancetype)URLByResolvingBookmarkData:(NSData *)bookmarkData
                                            options:(NSURLBookmarkResolutionOptions)options
                                      relativeToURL:(nullable NSURL *)relativeURL
                                bookmarkDataIsStale:(BOOL *_Nullable)isStale
                                              error:(NSError *_Nullable *_Nullable)error API_AVAILABLE(macos(10.6));
- (BOOL)startAccessingSecurityScopedResource API_AVAILABLE(macos(10.7));
- (void)stopAccessingSecurityScopedResource API_AVAILABLE(macos(10.7));
@end

@interface NSBundle : NSObject
@property (class, readonly, strong) NSBundle *mainBundle;
@property (readonly, copy) NSString *bundlePath;
@property (nullable, readonly, copy) NSString *bundleIdentifier;
@property (nullable, readonly, copy) NSString *executablePath;
@property (nullable, readonly, copy) NSDictionary<NSString *, id> *infoDictionary;
+ (nullable instancetype)bundleWithPath:(NSString *)path;
@end

@interface NSFileManager : NSObject
@property (class, readonly, strong) NSFileManager *defaultManager;
- (nullable NSURL *)containerURLForSecurityApplicationGroupIdentifier:(NSString *)groupIdentifier
    API_AVAILABLE(macos(10.8));
@end

@interface NSUserDefaults : NSObject
@property (class, readonly, strong) NSUserDefaults *standardUserDefaults;
- (nullable NSData *)dataForKey:(NSString *)defaultName;
- (void)setObject:(nullable id)value forKey:(NSString *)defaultName;
- (NSDictionary<NSString *, id> *)dictionaryRepresentation;
- (BOOL)synchronize;
@end

enum NSSearchPathDirectory : NSUInteger { NSApplicationSupportDirectory = 14 };
enum NSSearchPathDomainMask : NSUInteger { NSUserDomainMask = 1 };

extern "C" {
NSArray<NSString *> *NSSearchPathForDirectoriesInDomains(NSSearchPathDirectory directory,
                                                         NSSearchPathDomainMask domainMask, BOOL expandTilde);
void NSLog(NSString *format, ...) __attribute__((format(__NSString__, 1, 2)));
}

#pragma clang assume_nonnull end
