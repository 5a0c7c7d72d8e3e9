<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="zh_CN">
<context>
    <name>OndVipLoginUI</name>
    <message>
        <source>OndVipLoginUI</source>
        <translation>登录</translation>
    </message>
    <message>
        <source>Log in / Sign up PDF Orvell ID</source>
        <translation>登录 / 注册 PDF Orvell 账号</translation>
    </message>
    <message>
        <source>Log in with an existing account or enter a valid email address below to create one.</source>
        <translation>使用已有账号登录，或在下方输入有效的邮箱地址创建新账号。</translation>
    </message>
    <message>
        <source>Email</source>
        <translation>邮箱</translation>
    </message>
    <message>
        <source>Password</source>
        <translation>密码</translation>
    </message>
    <message>
        <source>Show Password</source>
        <translation>显示密码</translation>
    </message>
    <message>
        <source>TextLabel</source>
        <translation>提示</translation>
    </message>
    <message>
        <source>Log in / Sign up</source>
        <translation>登录 / 注册</translation>
    </message>
    <message>
        <source>Forgot password?</source>
        <translation>忘记密码？</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>关闭</translation>
    </message>
    <message>
        <source>this email has been registered</source>
        <translation>该邮箱已被注册</translation>
    </message>
    <message>
        <source>name too long</source>
        <translation>名称过长</translation>
    </message>
    <message>
        <source>email format wrong</source>
        <translation>邮箱格式不正确</translation>
    </message>
    <message>
        <source>account don&apos;t exists</source>
        <translation>账号不存在</translation>
    </message>
    <message>
        <source>password error</source>
        <translation>密码错误</translation>
    </message>
    <message>
        <source>unknown error code %1</source>
        <translation>未知错误码 %1</translation>
    </message>
    <message>
        <source>Please enter username and password</source>
        <translation>请输入用户名和密码</translation>
    </message>
    <message>
        <source>Logging in...</source>
        <translation>正在登录...</translation>
    </message>
    <message>
        <source>Login failed, %1</source>
        <translation>登录失败，%1</translation>
    </message>
</context>
</TS>
