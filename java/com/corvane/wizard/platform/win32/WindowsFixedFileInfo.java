package com.corvane.wizard.platform.win32;

/**
 * What is the same for all languages of the version that a file has among its resources: Windows'
 * VS_FIXEDFILEINFO. {@link #getFileVersion} and {@link #getProductVersion} are the versions as people write
 * them.
 *
 * <p>The native library calls the constructor and the setters by name and signature.
 */
public class WindowsFixedFileInfo {

    /** The signature of every such record that was made as it ought to be. */
    public static final int SIGNATURE = 0xFEEF04BD;

    /** A flag of the file: it was made for looking for faults. */
    public static final int FLAG_DEBUG = 1;

    /** A flag of the file: it is not for sale yet. */
    public static final int FLAG_PRERELEASE = 2;

    /** A flag of the file: it was changed after it was made. */
    public static final int FLAG_PATCHED = 4;

    /** A flag of the file: it was not made in the usual way. */
    public static final int FLAG_PRIVATE_BUILD = 8;

    /** A flag of the file: it is a variant of the one with the same version. */
    public static final int FLAG_SPECIAL_BUILD = 32;

    /** A type of file: a program. */
    public static final int TYPE_APPLICATION = 1;

    /** A type of file: a library. */
    public static final int TYPE_LIBRARY = 2;

    /** A type of file: a driver. */
    public static final int TYPE_DRIVER = 3;

    /** A type of file: a font. */
    public static final int TYPE_FONT = 4;

    private int signature;
    private int strucVersion;
    private int fileVersionMS;
    private int fileVersionLS;
    private int productVersionMS;
    private int productVersionLS;
    private int fileFlagsMask;
    private int fileFlags;
    private int fileOS;
    private int fileType;
    private int fileSubtype;
    private int fileDateMS;
    private int fileDateLS;

    /** Makes an object of zeros. */
    public WindowsFixedFileInfo() {}

    /**
     * The signature of the record.
     *
     * @return {@link #SIGNATURE}, or the record was not made as it ought to be
     */
    public int getSignature() {
        return signature;
    }

    /**
     * The signature of the record.
     *
     * @param signature {@link #SIGNATURE}, or the record was not made as it ought to be
     */
    public void setSignature(int signature) {
        this.signature = signature;
    }

    /**
     * The version of the record's own form.
     *
     * @return the version, with the lower number in the low 16 bits
     */
    public int getStrucVersion() {
        return strucVersion;
    }

    /**
     * The version of the record's own form.
     *
     * @param strucVersion the version, with the lower number in the low 16 bits
     */
    public void setStrucVersion(int strucVersion) {
        this.strucVersion = strucVersion;
    }

    /**
     * The first half of the file's version.
     *
     * @return the first number in the high 16 bits, the second in the low ones
     */
    public int getFileVersionMS() {
        return fileVersionMS;
    }

    /**
     * The first half of the file's version.
     *
     * @param fileVersionMS the first number in the high 16 bits, the second in the low ones
     */
    public void setFileVersionMS(int fileVersionMS) {
        this.fileVersionMS = fileVersionMS;
    }

    /**
     * The second half of the file's version.
     *
     * @return the third number in the high 16 bits, the fourth in the low ones
     */
    public int getFileVersionLS() {
        return fileVersionLS;
    }

    /**
     * The second half of the file's version.
     *
     * @param fileVersionLS the third number in the high 16 bits, the fourth in the low ones
     */
    public void setFileVersionLS(int fileVersionLS) {
        this.fileVersionLS = fileVersionLS;
    }

    /**
     * The first half of the version of the product that the file belongs to.
     *
     * @return the first number in the high 16 bits, the second in the low ones
     */
    public int getProductVersionMS() {
        return productVersionMS;
    }

    /**
     * The first half of the version of the product that the file belongs to.
     *
     * @param productVersionMS the first number in the high 16 bits, the second in the low ones
     */
    public void setProductVersionMS(int productVersionMS) {
        this.productVersionMS = productVersionMS;
    }

    /**
     * The second half of the version of the product that the file belongs to.
     *
     * @return the third number in the high 16 bits, the fourth in the low ones
     */
    public int getProductVersionLS() {
        return productVersionLS;
    }

    /**
     * The second half of the version of the product that the file belongs to.
     *
     * @param productVersionLS the third number in the high 16 bits, the fourth in the low ones
     */
    public void setProductVersionLS(int productVersionLS) {
        this.productVersionLS = productVersionLS;
    }

    /**
     * The flags that mean something in {@link #getFileFlags}.
     *
     * @return these, as bits
     */
    public int getFileFlagsMask() {
        return fileFlagsMask;
    }

    /**
     * The flags that mean something in {@link #getFileFlags}.
     *
     * @param fileFlagsMask these, as bits
     */
    public void setFileFlagsMask(int fileFlagsMask) {
        this.fileFlagsMask = fileFlagsMask;
    }

    /**
     * What else there is to know of the file.
     *
     * @return the flags that begin with FLAG, as bits
     */
    public int getFileFlags() {
        return fileFlags;
    }

    /**
     * What else there is to know of the file.
     *
     * @param fileFlags the flags that begin with FLAG, as bits
     */
    public void setFileFlags(int fileFlags) {
        this.fileFlags = fileFlags;
    }

    /**
     * The system that the file was made for.
     *
     * @return Windows' number, such as 0x40004 for all that runs programs of 32 or 64 bits
     */
    public int getFileOS() {
        return fileOS;
    }

    /**
     * The system that the file was made for.
     *
     * @param fileOS Windows' number, such as 0x40004 for all that runs programs of 32 or 64 bits
     */
    public void setFileOS(int fileOS) {
        this.fileOS = fileOS;
    }

    /**
     * What the file is.
     *
     * @return one of the constants that begin with TYPE, or another number of Windows'
     */
    public int getFileType() {
        return fileType;
    }

    /**
     * What the file is.
     *
     * @param fileType one of the constants that begin with TYPE, or another number of Windows'
     */
    public void setFileType(int fileType) {
        this.fileType = fileType;
    }

    /**
     * What the file is of its type, for drivers and fonts.
     *
     * @return Windows' number; 0 for programs and libraries
     */
    public int getFileSubtype() {
        return fileSubtype;
    }

    /**
     * What the file is of its type, for drivers and fonts.
     *
     * @param fileSubtype Windows' number; 0 for programs and libraries
     */
    public void setFileSubtype(int fileSubtype) {
        this.fileSubtype = fileSubtype;
    }

    /**
     * The first half of the file's date.
     *
     * @return the high 32 bits, nearly always 0
     */
    public int getFileDateMS() {
        return fileDateMS;
    }

    /**
     * The first half of the file's date.
     *
     * @param fileDateMS the high 32 bits, nearly always 0
     */
    public void setFileDateMS(int fileDateMS) {
        this.fileDateMS = fileDateMS;
    }

    /**
     * The second half of the file's date.
     *
     * @return the low 32 bits, nearly always 0
     */
    public int getFileDateLS() {
        return fileDateLS;
    }

    /**
     * The second half of the file's date.
     *
     * @param fileDateLS the low 32 bits, nearly always 0
     */
    public void setFileDateLS(int fileDateLS) {
        this.fileDateLS = fileDateLS;
    }

    /**
     * The version of the file, as people write it.
     *
     * @return four numbers with dots between them, such as "10.0.19041.1"
     */
    public String getFileVersion() {
        return version(fileVersionMS, fileVersionLS);
    }

    /**
     * The version of the product that the file belongs to, as people write it.
     *
     * @return four numbers with dots between them
     */
    public String getProductVersion() {
        return version(productVersionMS, productVersionLS);
    }

    private static String version(int first, int second) {
        return (first >>> 16) + "." + (first & 0xFFFF) + "." + (second >>> 16) + "." + (second & 0xFFFF);
    }

    /**
     * Both versions.
     *
     * @return such as "file 10.0.19041.1, product 10.0.19041.1"
     */
    @Override
    public String toString() {
        return "file " + getFileVersion() + ", product " + getProductVersion();
    }
}
