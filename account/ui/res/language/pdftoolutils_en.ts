<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en_US">
<context>
    <name>OndVipLoginUI</name>
    <message>
        <source>OndVipLoginUI</source>
        <translation>OndVipLoginUI</translation>
    </message>
    <message>
        <source>Log in / Sign up PDF Orvell ID</source>
        <translation>Log in / Sign up PDF Orvell ID</translation>
    </message>
    <message>
        <source>Log in with an existing account or enter a valid email address below to create one.</source>
        <translation>Log in with an existing account or enter a valid email address below to create one.</translation>
    </message>
    <message>
        <source>Email</source>
        <translation>Email</translation>
    </message>
    <message>
        <source>Password</source>
        <translation>Password</translation>
    </message>
    <message>
        <source>Show Password</source>
        <translation>Show Password</translation>
    </message>
    <message>
        <source>TextLabel</source>
        <translation>TextLabel</translation>
    </message>
    <message>
        <source>Log in / Sign up</source>
        <translation>Log in / Sign up</translation>
    </message>
    <message>
        <source>Forgot password?</source>
        <translation>Forgot password?</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Close</translation>
    </message>
    <message>
        <source>this email has been registered</source>
        <translation>this email has been registered</translation>
    </message>
    <message>
        <source>name too long</source>
        <translation>name too long</translation>
    </message>
    <message>
        <source>email format wrong</source>
        <translation>email format wrong</translation>
    </message>
    <message>
        <source>account don&apos;t exists</source>
        <translation>account don&apos;t exists</translation>
    </message>
    <message>
        <source>password error</source>
        <translation>password error</translation>
    </message>
    <message>
        <source>unknown error code %1</source>
        <translation>unknown error code %1</translation>
    </message>
    <message>
        <source>Please enter username and password</source>
        <translation>Please enter username and password</translation>
    </message>
    <message>
        <source>Logging in...</source>
        <translation>Logging in...</translation>
    </message>
    <message>
        <source>Login failed, %1</source>
        <translation>Login failed, %1</translation>
    </message>
</context>
</TS>
